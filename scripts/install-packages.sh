#!/usr/bin/env bash
# Installs the Debian packages that the given lists name and that are missing.
#
# Usage: scripts/install-packages.sh LIST...
set -euo pipefail

if [[ $# -eq 0 ]]; then
    echo "usage: $0 LIST..." >&2
    exit 2
fi

is_installed() {
    [[ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}

missing=()
while read -r package; do
    is_installed "$package" || missing+=("$package")
done < <(sed -e 's/#.*//' "$@" | tr -s ' \t' '\n' | sed '/^$/d' | sort -u)

if [[ ${#missing[@]} -eq 0 ]]; then
    exit 0
fi

as_root=()
if [[ $EUID -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing: ${missing[*]}" >&2
        echo "Installing them needs root. There is no sudo here: run as root 'apt-get install ${missing[*]}'." >&2
        exit 1
    fi
    as_root=(sudo)
fi

apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@"
}

# A fresh system has no package lists yet, an old one may lack the newest.
can_install() {
    apt-get install --simulate "${missing[@]}" >/dev/null 2>&1
}

echo "Installing ${#missing[@]} missing packages: ${missing[*]}"
log="$(mktemp)"
trap 'rm -f "$log"' EXIT
if ! { { can_install || apt update; } && apt install --yes --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    echo "The packages could not be installed; the messages of apt-get are above." >&2
    exit 1
fi
