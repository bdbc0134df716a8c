#!/usr/bin/env bash
# Runs the benchmark programs of the native release and measures its size and how long it takes to build.
#
# Usage: scripts/bench.sh
set -euo pipefail
cd "$(dirname "$0")/.."

build/release/bin/values_bench
echo
scripts/measure-size.sh release
echo
scripts/measure-build.sh
