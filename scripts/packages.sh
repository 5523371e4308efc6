# shellcheck shell=bash disable=SC2034 # the lists are read by those who source this
# What Debian 12 has to have installed, and why. Sourced by ./larder and ./check.

# To build the cook-book.
build_packages=(
    cmake ninja-build g++
    qt6-base-dev        # windows and printing
    qt6-svg-dev         # the window's art
    qt6-multimedia-dev  # the click and the film
    libgl-dev           # asked for by Qt's own build files
)

# To run it on a screen.
run_packages=(
    qt6-qpa-plugins qt6-wayland # the bridges to X11 and to Wayland
    fonts-ebgaramond fonts-lato # the two type families of the house
)

# To run it where there is no screen.
virtual_screen_packages=(
    xvfb openbox              # a screen, and a window manager on it
    xdotool wmctrl x11-utils  # to find the window, to ask it to close, to know that it is ready
    imagemagick               # the screenshot
)

# To test it.
test_packages=(
    libgtest-dev libgmock-dev libbenchmark-dev
    clang libclang-rt-14-dev  # the fuzz targets
    clang-format              # the layout of the code is checked
    python3 python3-gi gir1.2-atspi-2.0 at-spi2-core dbus-daemon # reading the screen
    desktop-file-utils appstream # the desktop entry and the software centre's page are checked
    shellcheck                # so are the scripts
)

# Installs those of the named packages that are missing; with all there, asks nobody anything.
need_packages() {
    local missing
    missing=$(missing_packages "$@")
    [[ -n $missing ]] || return 0
    # shellcheck disable=SC2206 # package names hold no blanks
    local list=($missing)
    if ! command -v apt-get >/dev/null; then
        fail "these Debian packages or what matches them here are needed: ${list[*]}"
    fi
    local -a as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null ||
            fail "please have an administrator run: apt-get install ${list[*]}"
        as_root=(sudo)
    fi
    say "Installing ${list[*]}"
    local -a apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get
        -o Acquire::Retries=5 -o DPkg::Lock::Timeout=300)
    quietly "${apt[@]}" update ||
        say "The list of packages could not be brought up to date."
    quietly "${apt[@]}" install -y --no-install-recommends "${list[@]}" </dev/null ||
        fail "apt-get could not install ${list[*]}"
    missing=$(missing_packages "$@")
    [[ -z $missing ]] || fail "not installed: $missing"
}

# Prints the names that are not installed, one a line. Without dpkg nothing can be told, and the
# build says what it lacks.
missing_packages() {
    command -v dpkg-query >/dev/null || return 0
    local installed
    installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true)
    local name
    for name in "$@"; do
        [[ $'\n'$installed$'\n' == *$'\ninstalled '"$name"$'\n'* ]] || printf '%s\n' "$name"
    done
}
