#!/usr/bin/env bash
# Makes the zip for Windows from a MinGW build, unpacks it, and does with it what a user does: runs the tool, and builds
# and runs a C program that finds the library in the unpacked tree.
# Usage: tools/check_windows_zip.sh BUILD_FOLDER
set -euo pipefail
exec < /dev/null

build=$(cd "${1:?the build folder}" && pwd)
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export WINEPREFIX=$build/wine WINEDEBUG=-all LC_ALL=C.UTF-8

fail() { echo "check_windows_zip.sh: $*" >&2; exit 1; }

# run OUTPUT PROGRAM ARGUMENT...: services that Wine starts keep the streams of a program, so they are files.
run() {
    local output=$1
    shift
    timeout --kill-after=10 120 "$wine" "$@" > "$output" 2>&1 || { cat "$output"; fail "$1 did not run"; }
}

rm -rf "$build/packages"
(cd "$build" && cpack -G ZIP > "$scratch/cpack.log" 2>&1) || { cat "$scratch/cpack.log"; fail "cpack made no zip"; }
python3 -m zipfile -e "$(compgen -G "$build/packages/*.zip")" "$scratch"
tree=$(compgen -G "$scratch/plxutils-*")
for file in bin/PLXUtils.dll bin/plxconvert.exe lib/libPLXUtils.dll.a include/plxutils/c/plxutils_c.h \
    include/plxutils/PLXUtils.h lib/cmake/PLXUtils/PLXUtilsConfig.cmake lib/pkgconfig/plxutils.pc; do
    [ -s "$tree/$file" ] || fail "the zip has no $file"
done

run "$scratch/version" "$tree/bin/plxconvert.exe" --version
grep -q '^plxconvert [0-9]' "$scratch/version" || fail "the tool does not tell its version"
x86_64-w64-mingw32-gcc-posix -std=c11 -Wall -Wextra -Wpedantic -Werror -I"$tree/include" \
    "$root/examples/consumer/place_pixel.c" -o "$tree/bin/place_pixel.exe" -L"$tree/lib" -lPLXUtils
run "$scratch/place" "$tree/bin/place_pixel.exe" "Z:$root/examples/geomap/geomap.gcp" 191.5 95
grep -q '^X 45129.*by 9 points' "$scratch/place" || { cat "$scratch/place"; fail "the C program gave something else"; }
echo "the zip of $build is good"
