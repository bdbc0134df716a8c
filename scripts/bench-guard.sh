#!/usr/bin/env bash
# Counts the instructions that each of our main operations takes in the native release, beside those in
# bench/guard_baseline.txt. Fails when an operation takes over 10 % more.
#
# Usage: scripts/bench-guard.sh [--update]
#
# --update makes what is counted now the baseline.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

baseline=bench/guard_baseline.txt
work=build/guard
counted="$work/instructions.txt"
if [[ $# -gt 1 || "${1:---update}" != --update ]]; then
    echo "usage: scripts/bench-guard.sh [--update]" >&2
    exit 2
fi
rm -rf "$work"
mkdir -p "$work"

# What was compiled, and with what, decides on the numbers: they are compared where these are the same.
describe_system() {
    echo "# Instructions of an operation, by scripts/bench-guard.sh with $(c++ --version | head -n 1), $(getconf GNU_LIBC_VERSION)"
}

# The C library chooses its functions by the processor: here those that every processor has. And addresses, of which some
# depend on the environment, are always the same.
count_instructions() {
    env -i PATH="$PATH" GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX,-AVX2,-AVX512F,-AVX_Fast_Unaligned_Load,-BMI2,-ERMS,-FSRM,-SSE4_2,-SSSE3 \
        setarch --addr-no-randomize \
        valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file="$PWD/$work/callgrind" build/release/bin/guard_bench ||
        return
    for file in "$work"/callgrind.*; do
        awk '/^desc: Trigger: Client Request: / { sub(/^desc: Trigger: Client Request: /, ""); name = $0 }
             /^totals: / { total = $2 }
             END { if (split(name, parts, " x ") == 2) printf "%s\t%.0f\n", parts[1], total / parts[2] }' "$file"
    done | sort >"$counted"
    [[ -s "$counted" ]]
}

# Both lists are "<name>\t<instructions>"; prints a row for every name.
compare() {
    awk -F'\t' '
        function row(name, before, now, verdict) { printf "%-52s %12s %12s  %s\n", name, before, now, verdict }
        /^#/ { next }
        FNR == NR { before[$1] = $2; next }
        FNR == 1 { row("instructions of one", "baseline", "now", "") }
        !($1 in before) { row($1, "-", $2, "NEW"); isOther = 1; next }
        {
            change = 100 * ($2 - before[$1]) / before[$1]
            verdict = change > 10 ? "WORSE" : change < -10 ? "better" : "ok"
            count[verdict]++
            row($1, before[$1], $2, sprintf("%+6.1f %%  %s", change, verdict))
            delete before[$1]
        }
        END {
            for (name in before) { row(name, before[name], "-", "MISSING"); isOther = 1 }
            printf "\n%d ok, %d better, %d worse\n", count["ok"], count["better"], count["WORSE"]
            if (isOther) print "The baseline is for other operations: update it with --update."
            else if (count["better"]) print "Better: update the baseline with --update, so that it stays so."
            exit isOther || count["WORSE"] > 0
        }' "$baseline" "$counted"
}

step bench-guard "count instructions" count_instructions
if [[ "${1:-}" == --update ]]; then
    { describe_system; cat "$counted"; } >"$baseline"
    echo "$baseline has what was counted now."
    exit
fi
if [[ "$(head -n 1 "$baseline")" != "$(describe_system)" ]]; then
    echo "The baseline was made on another system, so that a difference may come from there:"
    head -n 1 "$baseline"
fi
compare
