#!/usr/bin/env bash
# Checks the layout of the source (clang-format) and its content (clang-tidy).
#
# Usage: scripts/lint.sh [--tests]
#
# The tests are nearly half of the files: their content is checked when they are asked for.
set -uo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

failed=0
tidied=('*.cpp' ':!tests')
[[ "${1:-}" != --tests ]] || tidied=('*.cpp')

# Tracked files and new ones, in the order of their paths; generated code lies in the build folder and is not ours.
source_files() {
    git ls-files --cached --others --exclude-standard -- "$@" | while read -r file; do
        [[ ! -f "$file" ]] || printf '%s\0' "$file"
    done | sort -zu
}

check_format() {
    source_files '*.h' '*.cpp' | xargs -0 --no-run-if-empty clang-format --dry-run -Werror
}

# The files that the build compiles: clang-tidy needs their flags.
compiled_files() {
    sed -n 's/^ *"file": "\(.*\)".*$/\1/p' build/clang/compile_commands.json | sort -u
}

check_tidy() {
    local folders
    folders="$(git ls-files --cached --others --exclude-standard -- '*/*.h' | cut -d/ -f1 | sort -u | paste -sd'|')"
    source_files "${tidied[@]}" | sed -z "s|^|$PWD/|" | tr '\0' '\n' | sort | comm -12 - <(compiled_files) | tr '\n' '\0' |
        xargs -0 --no-run-if-empty --max-args=1 --max-procs="$jobs" \
        clang-tidy --quiet -p build/clang --header-filter="^$PWD/($folders)/" 2>&1 |
        sed '/^[0-9]* warnings\? generated\.$/d'
}

step lint-format "clang-format" check_format || failed=1
# The generated headers must be there; nothing else needs to be built.
step lint-build "generate the sources" build_preset clang generated_sources || exit 1
step lint-tidy "clang-tidy" check_tidy || failed=1
exit $failed
