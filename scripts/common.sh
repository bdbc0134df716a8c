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
        grep -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed |[0-9]+: (\[ RUN |\[ +OK |\[---|.?$))' \
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
    awk '/^[0-9]+: \[       OK \] / { passed++ }
         /^[0-9]+: \[  SKIPPED \] .* \([0-9]+ ms\)/ { skipped++ }
         /^[0-9]+: \[  FAILED  \] .* \([0-9]+ ms\)/ { failed++ }
         /^ *[0-9]+\/[0-9]+ Test +#[0-9]+: / { # the last one counts where a test was repeated
             result[$3] = /\*\*\*Skipped/ ? "skipped" : / Passed +[0-9.]+ sec$/ ? "passed" : "failed"
         }
         END {
             for (test in result) results[result[test]]++
             if (!passed) { passed = results["passed"]; skipped = results["skipped"] }
             if (failed < results["failed"]) failed = results["failed"]
             if (NR) printf "%d passed, %d skipped, %d failed\n", passed, skipped, failed
         }' "$logs/$1.log"
}
