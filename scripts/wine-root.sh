#!/usr/bin/env bash
# The place where the Windows programs run: a small 32-bit system with Wine in build/wine-root.
#
# Usage: scripts/wine-root.sh make              make it, unless it is there
#        scripts/wine-root.sh run COMMAND...    run a command, in which scripts/wine.sh works
#        scripts/wine-root.sh check             say whether the rights that this takes are there
#        scripts/wine-root.sh remove
set -euo pipefail
cd "$(dirname "$0")/.."

root="$PWD/build/wine-root"
packages=(wine wine32)
suite=bookworm
# Quiet, without the parts for .NET and web pages, which it would ask to download.
wine_environment=(WINEPREFIX=/root/windows WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= DISPLAY=)
# Written last, and removed first: without it the root is half made. It says of what the root was made.
stamp="$root/.complete"
contents="$suite ${packages[*]}"

fail() {
    echo "$@" >&2
    exit 1
}

# What takes root rights, and gets them from sudo where it does without a password, or has it already.
as_root() {
    if [[ $EUID -eq 0 ]]; then
        "$@"
    else
        sudo --non-interactive "$@"
    fi
}

is_complete() {
    [[ -e "$stamp" && "$(<"$stamp")" == "$contents" ]]
}

# Says what is missing, if anything.
check() {
    as_root true 2>/dev/null ||
        fail "Running the Windows programs takes root rights: they run in a root of their own." \
            "Run it as root, or where sudo asks for no password: 'sudo -v' first."
    as_root unshare --mount --pid --fork true 2>/dev/null ||
        fail "This system does not let root make a mount namespace, which running the Windows programs takes." \
            "In a container, grant it the capability SYS_ADMIN."
}

# apart FUNCTION ARGUMENT...: calls it where nothing that it mounts or starts outlives it, or this script, however that
# ends, one caller at a time: the lock is held for as long as anything of it runs. What is mounted below build/ is never
# seen by who removes that folder.
apart() {
    check
    mkdir -p build
    exec 9>build/wine-root.lock
    flock --nonblock 9 || { echo "Waiting for another run in $root." && flock 9; }
    as_root setpriv --pdeathsig KILL \
        unshare --mount --propagation private --pid --fork --kill-child --mount-proc scripts/wine-root.sh --apart "$@"
}

# The mirror that this system installs from, too.
mirror() {
    apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(COMPONENT)' 2>/dev/null |
        awk -v suite="$suite" '$2 == suite && $3 == "main" { print $1; found = 1; exit }
                               END { if (!found) print "http://deb.debian.org/debian" }'
}

in_root() {
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "${wine_environment[@]}" "$@"
}

# Nothing to do where another caller has made it meanwhile.
make_root() {
    ! is_complete || return 0
    remove_root
    mkdir "$root"
    # It lets a shell read the path that it is given.
    mount --bind "$root" /mnt
    debootstrap --arch=i386 --variant=minbase "$suite" /mnt "$(mirror)"
    umount /mnt
    mount_in_root
    in_root apt-get -qq install --yes --no-install-recommends "${packages[@]}"
    in_root apt-get clean
    # Two programs that found no Windows folder would both begin to make one.
    in_root wineboot --init
    in_root wineserver --kill --wait
    echo "$contents" >"$stamp"
}

# Of the devices it has a few only: programs there reach no disk or serial port of this system.
mount_in_root() {
    local device
    mount -t proc proc "$root/proc"
    mount -t tmpfs tmpfs "$root/tmp"
    mount -t tmpfs tmpfs "$root/dev"
    ln -s /proc/self/fd "$root/dev/fd"
    for device in full null random urandom zero; do
        touch "$root/dev/$device"
        mount --bind "/dev/$device" "$root/dev/$device"
    done
}

run_in_root() {
    is_complete || fail "There is no complete $root: 'scripts/wine-root.sh make' makes one."
    mount_in_root
    mkdir -p "$root$PWD"
    mount --bind "$PWD" "$root$PWD"
    mount -o remount,bind,ro "$root$PWD"
    in_root wineserver --persistent
    # One program starts what all others then find running.
    in_root wine cmd /c exit
    local status=0
    env "${wine_environment[@]}" MORVANE_WINE_ROOT="$root" "$@" || status=$?
    in_root wineserver --kill || true
    # What the command wrote belongs to who called sudo.
    [[ -z "${SUDO_UID:-}" ]] || chown -R "$SUDO_UID:$SUDO_GID" build/mingw32
    return "$status"
}

# Only what is on this file system: no mount can be in there, but that is no place to trust in it.
remove_root() {
    rm -f "$stamp"
    rm -rf --one-file-system "$root"
}

case "${1:-}" in
    --apart) "${@:2}" ;;
    check) check ;;
    make) is_complete || apart make_root ;;
    run)
        [[ $# -gt 1 ]] || fail "Run what? Usage: scripts/wine-root.sh run COMMAND..."
        apart run_in_root "${@:2}"
        ;;
    remove) [[ ! -e "$root" ]] || apart remove_root ;;
    *)
        sed -n '2,/^[^#]/s/^# \{0,1\}//p' scripts/wine-root.sh >&2
        exit 2
        ;;
esac
