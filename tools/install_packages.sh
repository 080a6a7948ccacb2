#!/usr/bin/env bash
# Installs the Debian packages of cmake/packages.txt that serve the named purposes and are missing.
# Usage: tools/install_packages.sh build [test] [bench] [lint]
# Says nothing when there is nothing to do.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
[ $# -gt 0 ] || { echo "usage: install_packages.sh PURPOSE..." >&2; exit 2; }

missing=()
while read -r package purposes; do
    case $package in '' | '#'*) continue ;; esac
    for purpose in "$@"; do
        case " $purposes " in *" $purpose "*) missing+=("$package"); break ;; esac
    done
done < "$root/cmake/packages.txt"

if ! command -v dpkg-query > /dev/null; then
    echo "This is not a Debian system; these Debian packages, or what stands for them here, are needed:" >&2
    echo "  ${missing[*]}" >&2
    exit 0
fi

wanted=("${missing[@]}")
missing=()
for package in "${wanted[@]}"; do
    # shellcheck disable=SC2016
    state=$(dpkg-query -W -f '${Status}' "$package" 2> /dev/null || true)
    case $state in *' ok installed') ;; *) missing+=("$package") ;; esac
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo > /dev/null; then
        echo "Packages are missing and neither root rights nor sudo are at hand. As root, run:" >&2
        echo "  apt-get install -y ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 "$@"
}
# A list that cannot be refreshed is no reason to stop: the packages may be in the lists that are there.
apt update > "$log" 2>&1 < /dev/null || echo "apt-get update failed; trying with the package lists that are there" >&2
if ! apt install --no-install-recommends "${missing[@]}" >> "$log" 2>&1 < /dev/null; then
    cat "$log" >&2
    echo "These packages could not be installed: ${missing[*]}" >&2
    exit 1
fi
