#!/usr/bin/env bash
# Installs a build, moves the installed tree, and checks that other projects find the library there, by CMake and by
# pkg-config, in C and in C++, and that what they build runs.
# Usage: tools/check_installed.sh BUILD WORK [JOBS]
#   BUILD  a build folder with library and tool
#   WORK   a folder that is emptied first
set -euo pipefail

build=${1:?a build folder}
work=${2:?a folder to work in}
jobs=${3:-1}
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# Not below the checkout: stored names have no place for folders that begin with a dot.
model=$(mktemp -d /tmp/plx-package-XXXXXX)
trap 'rm -rf "$model"' EXIT
rm -rf "$work"
mkdir -p "$work"
work=$(cd "$work" && pwd)
prefix=$work/prefix

fail() { echo "check_installed.sh: $*" >&2; exit 1; }

# run_consumers FOLDER: both programs have to give these results.
run_consumers() {
    local out
    out=$("$1/place_pixel" "$root/examples/geomap/geomap.gcp" 273 179)
    [ "$out" = "X 4513504.23, Y 5648998.53 by 9 points, RMS 4.96" ] || fail "$1/place_pixel: $out"
    out=$("$1/estimate_value" "$root/examples/wells/wells.csv" 900 600 -15 300)
    [ "$out" = "20.408 by 4 samples" ] || fail "$1/estimate_value: $out"
}

# configure SOURCE BINARY [ARGUMENT...]
configure() {
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$prefix" "${@:3}"
    cmake --build "$2" --parallel "$jobs"
}

cmake --install "$build" --prefix "$work/first"
mv "$work/first" "$prefix"
library=$(find "$prefix" -name libPLXUtils.so.0 -type l)
[ -n "$library" ] || fail "the library has no name with its interface version"
[ -s "$prefix/share/man/man1/plxconvert.1" ] || fail "no manual page"
[ -s "$prefix/share/bash-completion/completions/plxconvert" ] || fail "no completion"

configure "$root/examples" "$work/examples"
cp "$root"/examples/valley/valley* "$model"
"$work/examples/valley/valley_solver" "$model"
"$work/examples/host/convert_model" "$model/valley.nam"
"$prefix/bin/plxconvert" modflow "$model/valley.nam" --quiet --dest "$model/results"
cmp "$model/GENERAL/node_coordinates.xyz" "$model/results/GENERAL/node_coordinates.xyz"
run_consumers "$work/examples/consumer"

configure "$root/examples/consumer" "$work/only_c" -DCONSUMER_CXX=OFF
[ ! -e "$work/only_c/estimate_value" ] || fail "the build for C made a C++ program"

mkdir "$work/pkg-config"
export PKG_CONFIG_PATH=${library%/*}/pkgconfig
make -C "$work/pkg-config" -f "$root/examples/consumer/Makefile"
run_consumers "$work/pkg-config"
