#!/usr/bin/env bash
# Prints how large the types library of a preset is, and what loading it costs.
#
# Usage: scripts/measure-size.sh [PRESET]
set -euo pipefail
cd "$(dirname "$0")/.."

preset="${1:-release}"
library="$(realpath "build/$preset/lib/libmorvaneTypes.so")"

row() {
    printf '  %-52s %8s %s\n' "$1" "$2" "$3"
}

# Sections that are loaded, without the names that the dynamic linker needs.
loaded="$(readelf --sections --wide "$library" | sed 's/^ *\[ *[0-9]*\] *//' |
    awk '$7 ~ /A/ && $1 !~ /^\.(dynsym|dynstr|hash|gnu\.hash|gnu\.version)$/ {print "0x" $5}' |
    { total=0; while read -r size; do total=$((total + size)); done; echo "$total"; })"
stripped="$(mktemp)"
trap 'rm -f "$stripped"' EXIT
strip -o "$stripped" "$library"

echo "The types library, $preset"
row "loaded sections, without the dynamic symbols' names" "$((loaded / 1000))" kB
row "the file, stripped" "$(($(stat --format=%s "$stripped") / 1000))" kB
"build/$preset/bin/load_bench" "$library"
