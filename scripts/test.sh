#!/usr/bin/env bash
# Builds one preset and runs its tests.
#
# Usage: scripts/test.sh PRESET
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

preset="${1:?usage: scripts/test.sh PRESET}"

step "$preset-build" "build $preset" build_preset "$preset"
step "$preset-test" "test $preset" ctest --preset "$preset" --parallel "$jobs" || {
    test_summary "$preset-test"
    exit 1
}
test_summary "$preset-test"
