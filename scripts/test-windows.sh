#!/usr/bin/env bash
# Builds for 32-bit Windows and runs the tests with Wine. Exits with 77 when they were built and can not be run here;
# the reason is in build/logs/windows-not-run.log.
#
# Usage: scripts/test-windows.sh
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

notRun="$logs/windows-not-run.log"
rm -f "$notRun"

step windows-build "build mingw32" build_preset mingw32
if ! scripts/wine-root.sh check 2>"$notRun"; then
    cat "$notRun"
    exit 77
fi
rm -f "$notRun"
step windows-root "make the root for Wine, if it is missing" scripts/wine-root.sh make
# Wine has been seen to hang where a program that had passed was to end.
step windows-test "test mingw32" \
    scripts/wine-root.sh run ctest --preset mingw32 --parallel "$jobs" --verbose --repeat after-timeout:2 || {
    test_summary windows-test
    exit 1
}
test_summary windows-test
