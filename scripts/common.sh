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
        grep -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed )' "$logs/$name.log" | tail -n 60
        return 1
    fi
}

# Configures a preset and builds it, wholly or only the named targets.
build_preset() {
    local preset="$1"
    shift
    cmake --preset "$preset" && cmake --build --preset "$preset" --parallel "$jobs" ${1:+--target "$@"}
}

# What ctest wrote to a step's log, in numbers: it counts what was skipped as passed.
test_summary() {
    awk '/^ *[0-9]+\/[0-9]+ Test +#[0-9]+: / {
             if ($0 ~ /\*\*\*Skipped/) skipped++
             else if ($0 ~ / Passed +[0-9.]+ sec$/) passed++
             else failed++
         }
         END { if (NR) printf "%d passed, %d skipped, %d failed\n", passed, skipped, failed }' "$logs/$1.log"
}
