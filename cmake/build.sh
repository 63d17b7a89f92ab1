# Sourced by the scripts at the top of the tree: fetching what a build needs and
# building quietly.

# Installs the Debian packages that are missing.
need() {
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if ! command -v apt-get >/dev/null; then
        echo "Please install what these Debian packages hold: ${missing[*]}" >&2
        exit 1
    fi
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    echo "Installing ${missing[*]} ..." >&2
    quietly "${as_root[@]}" apt-get update
    quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"
}

# Whether what a package is wanted for is there, however it came.
is_installed() {
    case $1 in
        ninja-build) command -v ninja >/dev/null ;;
        libcli11-dev) header CLI/CLI.hpp ;;
        nlohmann-json3-dev) header nlohmann/json.hpp ;;
        libarchive-dev) header archive.h ;;
        libgtest-dev) header gtest/gtest.h ;;
        libbenchmark-dev) header benchmark/benchmark.h ;;
        *) command -v "$1" >/dev/null ;;
    esac
}

header() {
    [ -e "/usr/include/$1" ] || [ -e "/usr/local/include/$1" ]
}

# Configures, if that was not done yet, and builds a preset.
build() (
    cd "$root"
    [ -e "build/$1/build.ninja" ] || quietly cmake --preset "$1"
    quietly cmake --build --preset "$1"
)

# Runs a command and shows what it printed only when it fails.
quietly() {
    local log
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}
