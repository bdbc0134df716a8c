#!/usr/bin/env bash
# Builds the release from nothing, without a compiler cache and in a folder of its own, and prints how long that takes, how
# long it takes again after one schema file has changed, and what the largest compiler process needs.
#
# Usage: scripts/measure-build.sh
set -euo pipefail
cd "$(dirname "$0")/.."

jobs="${JOBS:-$(nproc)}"
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT

row() {
    printf '  %-52s %8s %s\n' "$1" "$2" "$3"
}

# build NAME: builds all; the log tells seconds and, for each compiler process, its peak of memory in kB.
build() {
    local start=$SECONDS
    CCACHE_DISABLE=1 cmake --build "$folder/build" --parallel "$jobs" >"$folder/$1.log"
    echo $((SECONDS - start))
}

git ls-files -z --cached --others --exclude-standard | tar --create --null --ignore-failed-read --files-from=- | tar --extract --directory="$folder"
cmake -S "$folder" --preset release -B "$folder/build" \
    -DCMAKE_CXX_COMPILER_LAUNCHER="/usr/bin/time;--append;--output=$folder/peaks;--format=%M" >"$folder/configure.log"
echo "Building the release with $jobs jobs"
row "everything, from nothing" "$(build clean)" s
row "largest compiler process" "$(($(sort -n "$folder/peaks" | tail -n 1) / 1000))" MB
printf '\n/// Added by a measurement.\ndata Measured wire MorvaneMeasured since version1;\n' >>"$folder/types/api/core/session.tavik"
row "again, with a type added to one schema file" "$(build incremental)" s
build nothing >/dev/null
grep --quiet "no work to do" "$folder/nothing.log" || { echo "A build after that has still something to do." >&2; exit 1; }
