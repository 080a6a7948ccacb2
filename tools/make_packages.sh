#!/usr/bin/env bash
# Makes the Debian packages libplxutils0, libplxutils-dev and plxconvert, and checks them.
# Usage: tools/make_packages.sh [BUILD]
#   BUILD  a build folder (default: build/package-release); the packages are in its folder packages
# PLX_JOBS is the number of parallel jobs (default: the number of processors).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$root/build/package-release}
"$root/tools/install_packages.sh" build package

# With the prefix of the system the library goes where Debian puts libraries of this kind of machine.
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DPLX_BUILD_TESTS=OFF -DPLX_BUILD_EXAMPLES=OFF
cmake --build "$build" --parallel "${PLX_JOBS:-$(nproc)}"
rm -rf "$build/packages"
(cd "$build" && cpack -G DEB)
rm -rf "$build/packages/_CPack_Packages"
"$root/tools/check_packages.sh" "$build/packages"
