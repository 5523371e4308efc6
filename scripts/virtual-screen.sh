# shellcheck shell=bash disable=SC2030,SC2031 # all of it runs in the one subshell of photograph
# Running the cook-book where there is no screen.

# wait_until SECONDS COMMAND...: true as soon as the command is, false when the time is up.
wait_until() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < end)) || return 1
        sleep 0.05
    done
}

# photograph PICTURE PROGRAM ARGUMENT...: starts the program on a virtual screen, saves a picture
# of the screen when its window has been painted, asks the window to close, and returns the
# program's exit status. Runs in a shell of its own, which ends what it has started.
photograph() (
    picture=$1
    shift
    scratch=$(mktemp -d)
    started=()
    trap stop_started EXIT

    start_screen "$scratch/display"
    XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$scratch} QT_QPA_PLATFORM=xcb "$@" &
    program=$!
    started+=("$program")
    window=
    wait_until 60 find_window "$program" || fail "the cook-book showed no window"
    if [[ -n $window ]]; then
        wait_until 20 is_at_rest "$scratch" || true
        import -silent -window root "$picture"
        say "There is no display here. This is what the cook-book looks like: $picture"
        wmctrl -i -c "$window"
        wait_until 20 has_ended "$program" || fail "the cook-book did not close"
    fi
    wait "$program"
)

# start_screen FILE: a screen and a window manager on it. FILE receives the screen's number.
start_screen() {
    Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp 3>"$1" 2>/dev/null &
    started+=($!)
    wait_until 20 test -s "$1" || fail "the virtual screen did not start"
    DISPLAY=:$(<"$1")
    export DISPLAY
    openbox >/dev/null 2>&1 &
    started+=($!)
    wait_until 20 window_manager_runs || fail "the window manager did not start"
}

stop_started() {
    local i
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        kill "${started[i]}" 2>/dev/null || true
    done
    rm -rf "$scratch"
}

window_manager_runs() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}

has_ended() { ! kill -0 "$1" 2>/dev/null; }

# Sets `window` to the window of the process with this number. True also when the process has
# ended, for then there is nothing to wait for.
find_window() {
    window=$(wmctrl -lp 2>/dev/null | awk -v pid="$1" '$3 == pid {print $1; exit}')
    [[ -n $window ]] || has_ended "$1"
}

# Whether the screen looks as it did at the call before.
is_at_rest() {
    import -silent -window root rgb:"$1/now" || return 1
    local same=false
    cmp -s "$1/now" "$1/before" && same=true
    mv "$1/now" "$1/before"
    $same
}
