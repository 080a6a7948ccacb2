#!/usr/bin/env bash
# Lays out the C and C++ sources by .clang-format, or with --check only tells which ones differ (exit code 1).
# Usage: tools/format.sh [--check] [FILE...]      (no files: all sources of the project)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
mode=(-i)
if [ "${1:-}" = --check ]; then
    mode=(--dry-run -Werror)
    shift
fi

formatter=
for candidate in clang-format-14 clang-format; do
    if command -v "$candidate" > /dev/null && "$candidate" --version | grep -q 'version 14\.'; then
        formatter=$candidate
        break
    fi
done
if [ -z "$formatter" ]; then
    echo "format.sh: clang-format 14 is needed (Debian package clang-format); other versions lay out differently" >&2
    exit 2
fi

if [ $# -gt 0 ]; then
    printf '%s\0' "$@" | xargs -0 "$formatter" "${mode[@]}"
    exit
fi
cd "$root"
folders=()
for folder in include src app tests examples bench fuzz; do
    [ ! -d "$folder" ] || folders+=("$folder")
done
find "${folders[@]}" -type f \( -name '*.h' -o -name '*.cpp' -o -name '*.c' \) -not -path 'tests/data/*' -print0 |
    xargs -0 -r -n 16 "$formatter" "${mode[@]}"
