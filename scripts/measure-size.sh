#!/usr/bin/env bash
# Prints how large a library is, in bytes, as lines for the table of benchmarks.
#
# Usage: scripts/measure-size.sh PARTY LIBRARY
set -euo pipefail

party="$1"
library="$2"

row() {
    printf '%s\ttypes library\t%s\t%s\tB\n' "$1" "$party" "$2"
}

stripped="$(mktemp)"
trap 'rm -f "$stripped"' EXIT
strip -o "$stripped" "$library"
row "library, stripped" "$(stat --dereference --format=%s "$stripped")"
# Sections that are loaded, without the names that the dynamic linker needs.
row "of that, loaded, without symbols" "$(readelf --sections --wide "$library" | sed 's/^ *\[ *[0-9]*\] *//' |
    awk '$7 ~ /A/ && $1 !~ /^\.(dynsym|dynstr|hash|gnu\.hash|gnu\.version)$/ {print "0x" $5}' |
    { total=0; while read -r size; do total=$((total + size)); done; echo "$total"; })"
