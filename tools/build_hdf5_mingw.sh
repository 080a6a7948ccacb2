#!/usr/bin/env bash
# Cross-builds a static HDF5 for Windows, which Debian does not have, from Debian's own source package, and prints
# the folder that it is installed in. Built once: the folder's name holds a hash of this script.
#
# Usage: tools/build_hdf5_mingw.sh [--print] [--jobs N]
#   --print   only print the folder
#   --jobs N  number of parallel jobs (default: the number of processors)
# PLX_CACHE names the folder to keep it in (default: $XDG_CACHE_HOME/plxutils or ~/.cache/plxutils).
set -euo pipefail
exec < /dev/null

self=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/$(basename "${BASH_SOURCE[0]}")
jobs=$(nproc)
print_only=no
while [ $# -gt 0 ]; do
    case $1 in
        --print) print_only=yes ;;
        --jobs) jobs=${2:?--jobs needs a number}; shift ;;
        -h | --help) sed -n '2,8s/^# \{0,1\}//p' "$self"; exit 0 ;;
        *) echo "build_hdf5_mingw.sh: unknown option $1" >&2; exit 2 ;;
    esac
    shift
done

cache=${PLX_CACHE:-${XDG_CACHE_HOME:-${HOME:?HOME or PLX_CACHE must be set}/.cache}/plxutils}
hash=$(sha256sum "$self" | cut -c1-16)
prefix=$cache/hdf5-mingw-$hash
if [ "$print_only" = yes ] || [ -e "$prefix/complete" ]; then
    echo "$prefix"
    exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$cache" "$work/sources" "$work/lists/partial" "$work/cache/archives/partial" "$work/include/sys" \
    "$work/build" "$work/wine"
log=$work/log

# Everything that may fail says nothing unless it does.
step() {
    local what=$1
    shift
    "$@" >> "$log" 2>&1 && return
    tail -n 40 "$log" >&2
    echo "HDF5 for Windows: $what failed" >&2
    exit 1
}

fetch() {
    # Lists of its own: the machine's configuration need not name source packages and stays as it is.
    local suite=bookworm signed=/usr/share/keyrings/debian-archive-keyring.gpg mirror
    # shellcheck disable=SC2016
    mirror=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        awk -v suite="$suite" '$2 == suite && $3 == "main" { print $1; exit }')
    printf 'deb-src [signed-by=%s] %s %s main\n' "$signed" "${mirror:-http://deb.debian.org/debian}" "$suite" \
        > "$work/sources.list"
    local apt=(apt-get -q -o "Dir::Etc::sourcelist=$work/sources.list" -o Dir::Etc::sourceparts=-
        -o "Dir::State::lists=$work/lists" -o "Dir::Cache=$work/cache" -o APT::Sandbox::User=root
        -o Acquire::Retries=3)
    "${apt[@]}" update && (cd "$work/sources" && "${apt[@]}" source --download-only hdf5)
}

configure() {
    # HDF5 asks programs of its own about number types while it is configured, so cross-building needs an emulator.
    # The two defines keep the compiler's headers of vector instructions out of its sources, where they only
    # cost time; the empty header stands for one that one of its checks wants and Windows does not have.
    : > "$work/include/sys/wait.h"
    cd "$work/build"
    export WINEDEBUG=-all LC_ALL=C.UTF-8 WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
    unset DISPLAY WAYLAND_DISPLAY
    cmake "$work/hdf5" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix.new" \
        -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_SYSTEM_PROCESSOR=x86_64 \
        -DCMAKE_C_COMPILER=x86_64-w64-mingw32-gcc-posix -DCMAKE_RC_COMPILER=x86_64-w64-mingw32-windres \
        -DCMAKE_FIND_ROOT_PATH=/usr/x86_64-w64-mingw32 -DCMAKE_FIND_ROOT_PATH_MODE_PROGRAM=NEVER \
        -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY \
        -DCMAKE_CROSSCOMPILING_EMULATOR="$emulator" -DCMAKE_EXE_LINKER_FLAGS=-static \
        -DCMAKE_C_FLAGS="-w -O1 -D_X86INTRIN_H_INCLUDED -D_IMMINTRIN_H_INCLUDED -I$work/include" \
        -DCMAKE_C_FLAGS_RELEASE=-DNDEBUG -DBUILD_SHARED_LIBS=OFF -DBUILD_TESTING=OFF \
        -DHDF5_BUILD_TOOLS=OFF -DHDF5_BUILD_HL_LIB=OFF -DHDF5_BUILD_CPP_LIB=OFF -DHDF5_BUILD_FORTRAN=OFF \
        -DHDF5_BUILD_EXAMPLES=OFF -DHDF5_BUILD_UTILS=OFF -DHDF5_ENABLE_Z_LIB_SUPPORT=ON \
        -DZLIB_INCLUDE_DIR=/usr/x86_64-w64-mingw32/include -DZLIB_LIBRARY=/usr/x86_64-w64-mingw32/lib/libz.a
}

emulator=$(command -v wine64 || echo /usr/lib/wine/wine64)
wineserver=$(command -v wineserver || echo /usr/lib/wine/wineserver)
# A folder that was set up before saves the time; a server of ours in one of our own must not outlive it.
if [ -z "${WINEPREFIX:-}" ]; then
    export WINEPREFIX=$work/wine
    trap '"$wineserver" -k > /dev/null 2>&1 || true; rm -rf "$work"' EXIT
fi
step "fetching the sources" fetch
step "unpacking" dpkg-source --no-check -x "$work/sources"/hdf5_*.dsc "$work/hdf5"
rm -rf "$prefix.new" "$prefix"
step "configuring" configure
step "compiling" cmake --build "$work/build" --parallel "$jobs"
step "installing" cmake --install "$work/build"
# Its configuration files hold the folder that it was installed in.
find "$prefix.new" -name '*.cmake' -exec sed -i "s|$prefix.new|$prefix|g" {} +
mv "$prefix.new" "$prefix"
touch "$prefix/complete"
echo "$prefix"
