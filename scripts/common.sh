# Helpers of the scripts in this folder; to be sourced, with the repository root as the current folder.

jobs="${JOBS:-$(nproc)}"
logs=build/logs
mkdir -p "$logs"

# step NAME WHAT COMMAND...: runs the command with its output in build/logs/NAME.log and says in one line how it went.
step() {
    local name="$1" what="$2" start=$SECONDS
    shift 2
    printf '%-58s ' "$what"
    if "$@" >"$logs/$name.log" 2>&1; then
        printf 'ok      %4d s\n' $((SECONDS - start))
    else
        printf 'FAILED  %4d s\n' $((SECONDS - start))
        echo "--- the end of $logs/$name.log:"
        # Of a test run only what failed.
        grep -vE '^ *(Start +[0-9]+:|([0-9]+/[0-9]+ +)?Test .* Passed |[0-9]+: (\[ RUN |\[ +OK |\[---|.?$))' \
            "$logs/$name.log" | tail -n 60
        return 1
    fi
}

# Configures a preset and builds it, wholly or only the named targets.
build_preset() {
    local preset="$1"
    shift
    cmake --preset "$preset" && cmake --build --preset "$preset" --parallel "$jobs" ${1:+--target "$@"}
}

# What ctest wrote to a step's log, in numbers: it counts what was skipped as passed. Where a test is a whole program, and
# ctest was told to be verbose, the program's cases are counted.
test_summary() {
    awk '/^[0-9]+: \[ +(OK|SKIPPED|FAILED) +\] .* \([0-9]+ ms\)/ {
             sub(/,$/, "", $5)
             cases[$1 + 0, $5] = $3 == "OK" ? "passed" : $3 == "SKIPPED" ? "skipped" : "failed"
         }
         /^ *([0-9]+\/[0-9]+ +)?Test +#[0-9]+: / { # without numbers in front where a test was repeated
             number = $0
             sub(/^[^#]*#/, "", number)
             if (number + 0 in result) repeated++
             result[number + 0] = /\*\*\*Skipped/ ? "skipped" : / Passed +[0-9.]+ sec$/ ? "passed" : "failed"
         }
         END {
             for (key in cases) {
                 split(key, part, SUBSEP)
                 hasCases[part[1]] = 1
                 if (cases[key] == "failed") hasFailed[part[1]] = 1
                 count[cases[key]]++
             }
             for (test in result) {
                 isCounted = result[test] == "failed" ? test in hasFailed : test in hasCases
                 if (!isCounted) count[result[test]]++
             }
             if (NR) printf "%d passed, %d skipped, %d failed", count["passed"], count["skipped"], count["failed"]
             if (repeated) printf ", %d repeated after a timeout", repeated
             if (NR) print ""
         }' "$logs/$1.log"
}
