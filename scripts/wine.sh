#!/bin/sh
# Runs a Windows program with Wine in its root; what `ctest` starts the tests with. Works below `wine-root.sh run` only.
#
# Usage: scripts/wine.sh PROGRAM [ARGUMENT...]
if [ -z "$MORVANE_WINE_ROOT" ]; then
    echo "There is no Wine here. Run the whole command by 'scripts/wine-root.sh run COMMAND...'." >&2
    exit 125
fi
# Any other locale is not there, or makes Wine read names and arguments as ASCII.
export HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8
# The folder that is current stays so, as far as it is there.
exec chroot "$MORVANE_WINE_ROOT" /bin/sh -c 'cd "$0" 2>/dev/null; exec /usr/lib/wine/wine "$@"' "$PWD" "$@"
