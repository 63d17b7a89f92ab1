# Sourced by the scripts of this tree: installs what a build needs, and builds.

# Prints the comment that a script begins with, when the script was asked for its help.
# Call it with the script's arguments.
help_if_asked() {
    local argument
    for argument in "$@"; do
        case $argument in
            -h | --help)
                sed -n '2,/^[^#]/ s/^# \{0,1\}//p' "$0"
                exit
                ;;
        esac
    done
}

# What the builds of the tool, of the npm package and of the benchmarks need.
tool_packages=(g++ cmake ninja-build libcli11-dev libarchive-dev zlib1g-dev libsqlite3-dev
    nettle-dev)
wasm_packages=(cmake ninja-build clang-19 lld-19 llvm-19 libc++-19-dev-wasm32
    libc++abi-19-dev-wasm32 libclang-rt-19-dev-wasm32 wasi-libc nodejs npm)
bench_packages=(g++ cmake ninja-build pkg-config libbenchmark-dev libarchive-dev zlib1g-dev)

# Installs the Debian packages that are missing.
need() {
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if ! command -v apt-get >/dev/null; then
        echo "Please install what these Debian packages hold: ${missing[*]}" >&2
        exit 1
    fi
    local install=(apt-get install -y --no-install-recommends "${missing[@]}") as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        can_use_sudo || ask_root "${install[@]}"
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}, about a minute ..." >&2
    if ! quietly "${as_root[@]}" apt-get update ||
        ! quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}"; then
        [ "$(id -u)" -eq 0 ] || ask_root "${install[@]}"
        exit 1
    fi
}

# sudo asks for a password only where somebody can answer.
can_use_sudo() {
    command -v sudo >/dev/null && { [ -t 2 ] || sudo -n true 2>/dev/null; }
}

ask_root() {
    echo "Packages are missing. Please run this line as root, then start again:" >&2
    echo "    apt-get update && $*" >&2
    exit 1
}

# Whether what a package is wanted for is there, however it came.
is_installed() {
    case $1 in
        ninja-build) command -v ninja >/dev/null ;;
        libcli11-dev) header CLI/CLI.hpp ;;
        nlohmann-json3-dev) header nlohmann/json.hpp ;;
        libarchive-dev) header archive.h ;;
        zlib1g-dev) header zlib.h ;;
        tcl) command -v tclsh >/dev/null ;;
        googletest) [ -e /usr/src/googletest/CMakeLists.txt ] ;;
        libsqlite3-dev) header sqlite3.h ;;
        nettle-dev) header nettle/sha2.h ;;
        libgtest-dev) header gtest/gtest.h ;;
        libbenchmark-dev) header benchmark/benchmark.h ;;
        python3-dev) [ -e "$(python3 -c 'import sysconfig; print(sysconfig.get_path("include"))' 2>/dev/null)/Python.h" ] ;;
        openjdk-*) command -v java >/dev/null ;;
        maven) command -v mvn >/dev/null ;;
        python3-venv) python3 -c 'import ensurepip, venv' 2>/dev/null ;;
        python3-jsonschema) python3 -c 'import jsonschema' 2>/dev/null ;;
        nodejs) command -v node >/dev/null ;;
        llvm-19) command -v llvm-ar-19 >/dev/null ;;
        wasi-libc) header wasm32-wasi/stdio.h ;;
        dpkg-dev) command -v dpkg-buildflags >/dev/null ;;
        libc++*-19-dev-wasm32) [ -e "/usr/lib/llvm-19/lib/wasm32-wasi/${1%-19-dev-wasm32}.a" ] ;;
        libclang-rt-19-dev-wasm32) [ -e /usr/lib/llvm-19/lib/clang/19/lib/wasi ] ;;
        libclang-rt-*) compgen -G "$(clang -print-resource-dir)/lib/*/libclang_rt.fuzzer*" >/dev/null ;;
        *) command -v "$1" >/dev/null ;;
    esac
}

header() {
    [ -e "/usr/include/$1" ] || [ -e "/usr/local/include/$1" ]
}

# build PRESET WHAT TIME: builds a preset when something has changed, and says so: WHAT
# is built and the TIME that all of it takes. On a terminal Ninja shows how far it is.
#
# BOUNCECHECK_STRICT=ON in the environment makes warnings errors in the build folder.
build() (
    cd "$root"
    local preset=$1 what=$2 time=", $3" folder=build/$1
    if [ ! -e "$folder/build.ninja" ]; then
        quietly cmake --preset "$preset" ${BOUNCECHECK_STRICT:+-D "BOUNCECHECK_STRICT=$BOUNCECHECK_STRICT"} || exit 1
    else
        [ -z "${BOUNCECHECK_STRICT:-}" ] ||
            quietly cmake -D "BOUNCECHECK_STRICT=$BOUNCECHECK_STRICT" "$folder" || exit 1
        time=
    fi
    ! cmake --build "$folder" -- -n | grep -q 'no work to do' || return 0
    echo "Building $what$time ..." >&2
    if [ -t 2 ]; then
        cmake --build --preset "$preset" >&2
    else
        quietly cmake --build --preset "$preset"
    fi
)

# build_wasm TARGET: builds a WebAssembly module in build/node/cmake. Heeds BOUNCECHECK_STRICT,
# as above.
build_wasm() (
    cd "$root"
    local folder=build/node/cmake
    [ -e "$folder/build.ninja" ] || quietly cmake -S bindings/node -B "$folder" -G Ninja \
        --toolchain wasm32.cmake -D CMAKE_BUILD_TYPE=MinSizeRel || exit 1
    [ -z "${BOUNCECHECK_STRICT:-}" ] ||
        quietly cmake -D "BOUNCECHECK_STRICT=$BOUNCECHECK_STRICT" "$folder" || exit 1
    echo "Building the WebAssembly module ..." >&2
    quietly cmake --build "$folder" --target "$1"
)

# Runs a command and shows what it printed only when it fails.
quietly() {
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 || status=$?
    [ "$status" -eq 0 ] || cat "$log" >&2
    rm -f "$log"
    return "$status"
}
