#!/usr/bin/env bash
# Checks the layout of the source (clang-format) and its content (clang-tidy).
#
# Usage: scripts/lint.sh
#
# clang-tidy reads several files at a time (CMake's unity builds): most of its time goes into headers. What it finds is
# told with the file and line where it stands, as always.
set -uo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

failed=0
lint_build=build/lint

# Tracked files and new ones, in the order of their paths; generated code lies in the build folder and is not ours.
source_files() {
    git ls-files --cached --others --exclude-standard -- "$@" | while read -r file; do
        [[ ! -f "$file" ]] || printf '%s\0' "$file"
    done | sort -zu
}

check_format() {
    source_files '*.h' '*.cpp' | xargs -0 --no-run-if-empty clang-format --dry-run -Werror
}

# What the build compiles: files, and those that include several. Of these only what has files of ours in it.
tidied_files() {
    sed -n 's/^ *"file": "\(.*\)".*$/\1/p' "$lint_build/compile_commands.json" | sort -u | while read -r file; do
        case "$file" in
        "$PWD/$lint_build"/*/Unity/*)
            if grep '^#include' "$file" | grep --quiet --invert-match "\"$PWD/build/"; then
                printf '%s\0' "$file"
            fi
            ;;
        "$PWD"/build/*) ;;
        "$PWD"/*) printf '%s\0' "$file" ;;
        esac
    done
}

# That a file includes others of the same kind is what the unity builds are.
check_tidy() {
    local folders
    folders="$(git ls-files --cached --others --exclude-standard -- '*/*.h' '*/*.cpp' | cut -d/ -f1 | sort -u | paste -sd'|')"
    tidied_files | xargs -0 --no-run-if-empty --max-args=1 --max-procs="$jobs" \
        clang-tidy --quiet -p "$lint_build" --checks=-bugprone-suspicious-include \
        --header-filter="^$PWD/($folders)/" 2>&1 |
        sed '/^[0-9]* warnings\? generated\.$/d'
}

# The generated headers must be there; nothing else needs to be built.
generate() {
    cmake --preset clang -B "$lint_build" -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=16 &&
        cmake --build "$lint_build" --parallel "$jobs" --target generated_sources
}

step lint-format "clang-format" check_format || failed=1
step lint-build "generate the sources" generate || exit 1
step lint-tidy "clang-tidy" check_tidy || failed=1
exit $failed
