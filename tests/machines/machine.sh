# Sourced by the scripts of this folder: bare Debian systems to run commands in.
#
# A system is made by debootstrap once and kept as build/machines/SUITE-ARCHITECTURE.tar;
# remove that file to have a new one. What a script does happens in a copy of it, among
# mounts and processes of its own, which end with the script however that ends.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/cmake/build.sh"
help_if_asked "$@"
name=${0#"$root/"}
fail() { echo "$name: $1" >&2 && exit "${2:-1}"; }

[ "$(id -u)" -eq 0 ] || fail "must run as root"
need debootstrap git
if [ -z "${IN_OWN_NAMESPACE:-}" ]; then
    IN_OWN_NAMESPACE=1 exec unshare --mount --pid --fork --kill-child "$0" "$@"
fi
machines=$root/build/machines
mkdir -p "$machines"

# The host's proxy, and its Debian mirror unless MIRROR names one.
eval "$(apt-config shell http_proxy Acquire::http::Proxy)"
proxy=(${http_proxy:+"http_proxy=$http_proxy"})
debian_mirror() {
    apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Label: Debian' | head -n 1
}
mirror=${MIRROR:-$(debian_mirror)}
[ -n "$mirror" ] || fail "no Debian mirror is known; set MIRROR to the URL of one"

# make_machine SUITE ARCHITECTURE COPY: sets $machine to the folder of a new copy, and $log
# to the file that its commands write to. As in any clone, what is not committed is not there.
make_machine() {
    local bare=$machines/$1-$2
    machine=$machines/$1-$2-$3 log=$machines/$1-$2-$3.log
    : >"$log"
    if [ ! -e "$bare.tar" ]; then
        echo "Making a bare $1 for $2, some minutes ..."
        rm -rf --one-file-system "$bare"
        env "${proxy[@]}" debootstrap --variant=minbase --arch="$2" "$1" "$bare" "$mirror" \
            >>"$log" 2>&1 || failed "debootstrap of $1 for $2"
        tar -C "$bare" --numeric-owner -cf "$bare.new" . && mv "$bare.new" "$bare.tar"
        rm -rf --one-file-system "$bare"
    fi
    rm -rf --one-file-system "$machine"
    mkdir "$machine"
    tar -C "$machine" --numeric-owner -xf "$bare.tar"
    # A mirror may be a snapshot, older than the dates in it allow.
    echo 'Acquire::Check-Valid-Until "false";' >"$machine/etc/apt/apt.conf.d/90snapshot"
    cp -L /etc/resolv.conf /etc/hosts "$machine/etc/"
    mount -t proc proc "$machine/proc"
    chroot "$machine" useradd --create-home --shell /bin/bash user
    git clone --quiet --no-hardlinks "$root" "$machine/home/user/bouncecheck"
}

# inside USER COMMAND: runs a line of shell in the clone, which belongs to USER.
inside() {
    local user=$1 home
    home=$([ "$user" = root ] && echo /root || echo "/home/$user")
    chown -R -h --reference="$machine$home" "$machine/home/user/bouncecheck"
    echo "== $user: $2" >>"$log"
    chroot --userspec="$user" "$machine" env -i "${proxy[@]}" "${settings[@]}" HOME="$home" \
        PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        sh -c "cd /home/user/bouncecheck && $2" </dev/null >"$log.last" 2>&1
    local status=$?
    cat "$log.last" >>"$log"
    return "$status"
}
# More of the environment inside, such as CMAKE_BUILD_PARALLEL_LEVEL=2.
settings=(${CMAKE_BUILD_PARALLEL_LEVEL:+"CMAKE_BUILD_PARALLEL_LEVEL=$CMAKE_BUILD_PARALLEL_LEVEL"})

failed() {
    tail -n 30 "$log" >&2
    fail "$1 failed; see $log"
}

# passes USER COMMAND: the command has to end with 0.
passes() {
    local began=$SECONDS title=${2%%$'\n'*}
    inside "$@" || failed "$title as $1"
    printf '%5d s  %-4s  passed  %s\n' $((SECONDS - began)) "$1" "$title"
}

# Lets the builds inside share a compiler cache, for which its package is installed.
share_cache() {
    mkdir -p "$machines/ccache" "$machine/ccache"
    chmod 777 "$machines/ccache"
    mount --bind "$machines/ccache" "$machine/ccache"
    inside root 'apt-get update && apt-get install -y --no-install-recommends ccache' ||
        failed "installing ccache"
    settings+=(CCACHE_DIR=/ccache CCACHE_UMASK=000 CMAKE_CXX_COMPILER_LAUNCHER=ccache)
}
