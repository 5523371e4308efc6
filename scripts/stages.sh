# shellcheck shell=bash
# The stages of ./check and their count.
: "${root:?}"

passed=0
failed=0

# stage NAME COMMAND...: runs the command, says how long it took and how it ended. A stage that
# fails without having counted a failed test counts as one itself, so that the closing line never
# looks better than the run was.
stage() {
    local name=$1 start=$SECONDS before=$failed status=0
    shift
    say "== $name"
    # In a condition the shell does not stop at errors: each command behind a stage says by its
    # own status whether it has done its work.
    "$@" </dev/null || status=$?
    if ((status != 0 && failed == before)); then
        failed=$((failed + 1))
    fi
    if ((status == 0)); then
        say "== $name: done in $((SECONDS - start)) s"
    else
        say "== $name: FAILED after $((SECONDS - start)) s"
    fi
    return "$status"
}

# run_tests PRESET OPTION...: runs the tests of a build and adds them to the count. A build that
# has no tests has failed.
run_tests() {
    local folder=$root/build/$1 status=0 log
    shift
    log=$folder/check.log
    ctest --test-dir "$folder" --output-on-failure --no-tests=error --parallel "$(nproc)" \
        "$@" 2>&1 | tee "$log" | show_progress || status=$?
    count_tests "$log" || status=1
    return "$status"
}

# Leaves out the lines of tests that start and of those that pass: there are thousands.
show_progress() {
    grep --line-buffered -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test +#[0-9]+: .* Passed )' || true
}

# count_tests LOG: adds what ctest's closing line tells.
count_tests() {
    local line failures total
    line=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests? failed out of [0-9]+' "$1" | tail -n 1)
    [[ $line =~ ([0-9]+)\ tests?\ failed\ out\ of\ ([0-9]+) ]] || return 1
    failures=${BASH_REMATCH[1]}
    total=${BASH_REMATCH[2]}
    failed=$((failed + failures))
    passed=$((passed + total - failures))
    ((failures == 0))
}

# The closing line, and the exit status that goes with it.
sum_up() {
    say "$passed passed, $failed failed"
    ((failed == 0 && passed > 0))
}
