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
# Written last: without it the root is half made.
stamp="$root/.complete"

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

# Says what is missing, if anything.
check() {
    as_root true 2>/dev/null ||
        fail "Running the Windows programs takes root rights: they run in a root of their own." \
            "Run it as root, or where sudo asks for no password: 'sudo -v' first."
    as_root unshare --mount --pid --fork true 2>/dev/null ||
        fail "This system does not let root make a mount namespace, which running the Windows programs takes." \
            "In a container, grant it the capability SYS_ADMIN."
}

# apart FUNCTION ARGUMENT...: calls it where nothing that it mounts or starts outlives it, one caller at a time. What
# is mounted below build/ is thus never seen by who removes that folder. All that is started holds the lock, too: it is
# free when they have ended, even if this script was killed before.
apart() {
    check
    mkdir -p build
    exec 9>build/wine-root.lock
    flock --nonblock 9 || { echo "Waiting for another run in $root." && flock 9; }
    as_root unshare --mount --propagation private --pid --fork --kill-child --mount-proc scripts/wine-root.sh --apart "$@"
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

make_root() {
    [[ ! -e "$stamp" ]] || return 0 # by whom this one has waited for
    remove_root
    debootstrap --arch=i386 --variant=minbase "$suite" "$root" "$(mirror)"
    mount_in_root
    in_root apt-get -qq install --yes --no-install-recommends "${packages[@]}"
    in_root apt-get clean
    # Two programs that found no Windows folder would both begin to make one.
    in_root wineboot --init
    in_root wineserver --kill --wait
    touch "$stamp"
}

mount_in_root() {
    mount -t proc proc "$root/proc"
    mount --bind /dev "$root/dev"
    mount -t tmpfs tmpfs "$root/tmp"
}

run_in_root() {
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
    rm -rf --one-file-system "$root"
}

case "${1:-}" in
    --apart) "${@:2}" ;;
    check) check ;;
    make) [[ -e "$stamp" ]] || apart make_root ;;
    run)
        [[ $# -gt 1 ]] || fail "Run what? Usage: scripts/wine-root.sh run COMMAND..."
        [[ -e "$stamp" ]] || fail "There is no complete $root: 'scripts/wine-root.sh make' makes one."
        apart run_in_root "${@:2}"
        ;;
    remove) [[ ! -e "$root" ]] || apart remove_root ;;
    *)
        sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
esac
