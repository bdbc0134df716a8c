#!/usr/bin/env bash
# Lays out every source file of the repository.
#
# Usage: scripts/format.sh
set -euo pipefail
cd "$(dirname "$0")/.."

git ls-files --cached --others --exclude-standard -z -- '*.h' '*.cpp' | xargs -0 --no-run-if-empty clang-format -i
