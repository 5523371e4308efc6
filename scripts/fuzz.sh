# shellcheck shell=bash
# Building and running the fuzz targets.
: "${root:?}"

build_fuzz_targets() {
    if [[ ! -f $root/tests/fuzz/CMakeLists.txt ]]; then
        say "There are no fuzz targets: tests/fuzz/CMakeLists.txt is missing."
        return 1
    fi
    build fuzz tests/fuzz/all
}

# run_fuzz_targets SECONDS: runs each target for so long, all at once, since one keeps a single
# processor busy, and adds it to the count.
#
# Inputs that a target has found worth keeping stay in build/fuzz/corpus, so that every run goes on
# from where the one before has stopped; an input that broke it is left in build/fuzz/findings.
run_fuzz_targets() {
    local seconds=$1 target process status=0
    local -a targets processes=()
    mapfile -t targets < <(find "$root/build/fuzz/bin" -maxdepth 1 -type f -executable \
        -iname '*fuzz*' | sort)
    if ((${#targets[@]} == 0)); then
        say "No fuzz target was built."
        return 1
    fi
    for target in "${targets[@]}"; do
        run_fuzz_target "$target" "$seconds" &
        processes+=("$!")
    done
    for process in "${processes[@]}"; do
        if wait "$process"; then
            passed=$((passed + 1))
        else
            failed=$((failed + 1))
            status=1
        fi
    done
    return "$status"
}

run_fuzz_target() {
    local target=$1 name=${1##*/}
    local corpus=$root/build/fuzz/corpus/$name findings=$root/build/fuzz/findings
    local seeds=$root/tests/fuzz/seeds/$name log=$root/build/fuzz/$name.log
    mkdir -p "$corpus" "$findings"
    local -a folders=("$corpus")
    [[ ! -d $seeds ]] || folders+=("$seeds")
    if QT_QPA_PLATFORM=offscreen "$target" -max_total_time="$2" -timeout=10 -rss_limit_mb=1024 \
        -artifact_prefix="$findings/$name-" "${folders[@]}" >"$log" 2>&1; then
        say "   $name: $(grep -E '^Done [0-9]+ runs' "$log" || echo 'no count of runs')"
    else
        tail -n 60 "$log"
        say "   $name: FAILED; see $log and the input in $findings"
        return 1
    fi
}
