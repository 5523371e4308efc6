# shellcheck shell=bash
# What ./larder and ./check share. `root` is the folder of the sources.
: "${root:?}"

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# shellcheck source=scripts/packages.sh
source "$root/scripts/packages.sh"

# configure PRESET: makes build/PRESET ready to build, when it is not so already.
configure() {
    local folder=$root/build/$1
    local -a fresh=()
    if [[ -f $folder/CMakeCache.txt ]] &&
        ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        fresh=(--fresh) # the sources have been moved or copied here, with their build folder
    fi
    # A change to the build files is noticed by the build itself, one to the presets is not.
    if ((${#fresh[@]})) || [[ ! -f $folder/build.ninja ]] ||
        [[ $root/CMakePresets.json -nt $folder/build.ninja ]]; then
        if command -v ccache >/dev/null; then
            export CMAKE_CXX_COMPILER_LAUNCHER=ccache
        fi
        (cd "$root" && cmake --preset "$1" "${fresh[@]}")
    fi
}

# build PRESET TARGET...: one build at a time in each build folder.
build() {
    local preset=$1
    shift
    mkdir -p "$root/build"
    (
        flock 9
        configure "$preset" && cmake --build "$root/build/$preset" --target "$@"
    ) 9>"$root/build/$preset.lock"
}

# quietly COMMAND...: shows the command's output only when it fails.
quietly() {
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 || status=$?
    ((status == 0)) || cat "$log" >&2
    rm -f "$log"
    return "$status"
}
