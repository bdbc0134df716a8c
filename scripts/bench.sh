#!/usr/bin/env bash
# Runs the benchmark programs of the native release: every build/release/bin/*_bench.
#
# Usage: scripts/bench.sh
set -euo pipefail
cd "$(dirname "$0")/.."

shopt -s nullglob
programs=(build/release/bin/*_bench)
if [[ ${#programs[@]} -eq 0 ]]; then
    echo "There is no benchmark program in build/release/bin." >&2
    exit 1
fi
for program in "${programs[@]}"; do
    "$program"
done
