#!/usr/bin/env bash
# Builds one preset, wholly or only the named targets.
#
# Usage: scripts/build.sh PRESET [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

preset="${1:?usage: scripts/build.sh PRESET [TARGET...]}"

step "$preset-build" "build $preset" build_preset "$@"
