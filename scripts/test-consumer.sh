#!/usr/bin/env bash
# Installs a preset's build into a folder of its own, then builds and runs the project in tests/consumer and the
# installed examples against it.
#
# Usage: scripts/test-consumer.sh [PRESET]
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

preset="${1:-release}"
work="$PWD/build/consumer/$preset"
rm -rf "$work"
mkdir -p "$work"

# The package must not depend on where it was installed first.
install_and_move() {
    cmake --install "build/$preset" --prefix "$work/installed" && mv "$work/installed" "$work/prefix"
}

build_consumer() {
    cmake -G Ninja -S tests/consumer -B "$work/build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$work/prefix" &&
        cmake --build "$work/build" --parallel "$jobs"
}

# The examples are installed as a project of their own.
build_examples() {
    cmake -G Ninja -S "$work/prefix/share/morvaneTypes/examples" -B "$work/examples" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_PREFIX_PATH="$work/prefix" &&
        cmake --build "$work/examples" --parallel "$jobs"
}

step consumer-build "build $preset for the consumer" build_preset "$preset"
step consumer-install "install $preset" install_and_move
step consumer-project "build a project that uses the package" build_consumer
step consumer-run "run it" "$work/build/consumer"
step consumer-examples "build the installed examples" build_examples
step consumer-example "run the first one" "$work/examples/first_program"
