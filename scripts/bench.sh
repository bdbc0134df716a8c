#!/usr/bin/env bash
# Runs the benchmark programs of the native release and prints one table of what they have measured, with what we want.
# Their full output is in build/logs/, the results are in build/bench/.
#
# Usage: scripts/bench.sh [--filter REGEX] [--markdown FILE]
#
# --filter runs only the benchmarks whose names, "<operation>/<workload>/<party>", the expression matches.
# --markdown writes the table to a file, too.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

filter=
table_options=()
while [[ $# -gt 0 ]]; do
    case "$1" in
    --filter) filter="${2:?--filter needs an expression}" ;;
    --markdown) table_options+=(--markdown "${2:?--markdown needs a file}") ;;
    *)
        echo "usage: scripts/bench.sh [--filter REGEX] [--markdown FILE]" >&2
        exit 2
        ;;
    esac
    shift 2
done

status=0
[[ '' =~ $filter ]] || status=$?
if [[ $status -eq 2 ]]; then
    echo "bench.sh: --filter takes an extended regular expression, and '$filter' is none" >&2
    exit 2
fi

bin=build/release/bin
library="$(realpath build/release/lib/libmorvaneTypes.so)"
peer="build/release/lib/libmorvane_proto.so"
results=build/bench
rm -rf "$results"
mkdir -p "$results"

# Times on a busy machine are longer, and there is no second processor then for a second thread.
describe_machine() {
    local model
    model="$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)"
    echo "$model, $(nproc) processors, load $(cut -d" " -f1 /proc/loadavg) before; $(c++ --version | head -n 1)."
}

# run_benchmarks PROGRAM ROUNDS: in rounds, so that whatever else the machine does meets ours and the peers alike: they
# are compared within each.
run_benchmarks() {
    local round
    for ((round = 1; round <= $2; ++round)); do
        "$bin/$1" --benchmark_filter="${filter:-.}" --benchmark_min_time=0.01 \
            --benchmark_out="$results/$1-$round.json" --benchmark_out_format=json || return
    done
}

measure_load() {
    local peers=()
    [[ ! -e "$peer" ]] || peers=(protobuf "$peer" "$(ldd "$peer" | awk '/libprotobuf\./ {print $3}')")
    "$bin/load_bench" "$library" "${peers[@]}" >"$results/load.txt"
}

measure_size() {
    scripts/measure-size.sh morvane "$library" >"$results/size.txt" || return
    [[ ! -e "$peer" ]] || scripts/measure-size.sh protobuf "$peer" >>"$results/size.txt"
}

measure_memory() {
    "$bin/memory_bench" >"$results/memory.txt"
}

# That protobuf holds the same content as we do.
check_peer() {
    [[ ! -e "$peer" ]] || "$bin/proto_check" examples/*.json
}

heading="$(describe_machine)"
step bench-peer "values through protobuf and back" check_peer
step bench-values "values, fields and names" run_benchmarks values_bench 25
step bench-scaling "growth, threads and calls" run_benchmarks scaling_bench 11
if [[ -z "$filter" ]]; then
    step bench-load "loading the library" measure_load
    step bench-size "size of the library" measure_size
    step bench-memory "memory" measure_memory
fi
find "$results" -type f -size 0 -delete # of a program that has nothing of that name
measured=("$results"/*)
if [[ ! -e "${measured[0]}" ]]; then
    echo "No benchmark has a name that '$filter' matches." >&2
    exit 1
fi
echo
"$bin/bench_table" --heading "$heading" "${table_options[@]}" "${measured[@]}"
