#!/usr/bin/env bash
# Everything that is tested: each preset's tests, those of the Windows build with Wine, and the installed package. Goes on
# after a failure and says at the end what ran.
#
# Usage: scripts/test-all.sh
set -uo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

table=()
failures=0
notRun=0

# check NAME COMMAND...: runs one entry of the table.
check() {
    local name="$1" start=$SECONDS result=passed status=0
    shift
    "$@" || status=$?
    local count
    count="$(test_summary "$name-test" 2>/dev/null)"
    if [[ $status -eq 77 ]]; then # built, and can not be run here
        result='not run'
        notRun=$((notRun + 1))
        count="$(<"$logs/$name-not-run.log")"
    elif [[ $status -ne 0 ]]; then
        result=FAILED
        failures=$((failures + 1))
    fi
    table+=("$(printf '%-10s %-8s %5d s   %s' "$name" "$result" $((SECONDS - start)) "$count")")
}

rm -f "$logs"/*-test.log "$logs"/*-not-run.log
# The sanitizers are Clang's, so that it is a gate like GCC.
for preset in release asan tsan m32; do
    check "$preset" scripts/test.sh "$preset"
done
check windows scripts/test-windows.sh
check consumer scripts/test-consumer.sh release

echo
printf '%-10s %-8s %7s   %s\n' what result time tests
printf '%s\n' "${table[@]}"
if [[ $failures -ne 0 ]]; then
    echo "$failures of ${#table[@]} failed; logs are in $logs."
    exit 1
fi
if [[ $notRun -ne 0 ]]; then
    echo "No failures, but $notRun of ${#table[@]} could not be run here."
else
    echo "All ${#table[@]} passed."
fi
