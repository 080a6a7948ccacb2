#!/usr/bin/env bash
# Unpacks Debian packages of this library into an empty root and checks what is in them: that each has its files and
# depends on what it needs, and that the tool runs with the library that came along.
# Usage: tools/check_packages.sh FOLDER
set -euo pipefail

folder=${1:?the folder of the packages}
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() { echo "check_packages.sh: $*" >&2; exit 1; }

# package NAME PATTERN...: unpacks it; each pattern must match one of its files.
package() {
    local name=$1 found pattern
    shift
    found=$(compgen -G "$folder/${name}_*.deb") || fail "no package $name in $folder"
    dpkg -x "$found" "$scratch"
    dpkg -c "$found" > "$scratch/files"
    for pattern in "$@"; do
        grep -q -E "$pattern" "$scratch/files" || fail "$name: no file like $pattern"
    done
    if grep -q -v ' root/root ' "$scratch/files"; then fail "$name: files that root does not own"; fi
    dpkg -I "$found" > "$scratch/$name.control"
}

# control NAME PATTERN...: each pattern must match a line of the package's description.
control() {
    local name=$1 pattern
    shift
    for pattern in "$@"; do
        grep -q -E "$pattern" "$scratch/$name.control" || fail "$name: nothing in its control file like $pattern"
    done
}

package libplxutils0 '/usr/lib/.*libPLXUtils\.so\.0 ->' '/usr/share/doc/libplxutils0/changelog\.gz'
package libplxutils-dev '/libPLXUtils\.so ->' '/plxutils/c/GeoRef\.h' '/PLXUtilsConfig\.cmake' '/pkgconfig/plxutils\.pc'
package plxconvert '/usr/bin/plxconvert' '/man1/plxconvert\.1\.gz' '/bash-completion/completions/plxconvert'
control libplxutils0 'Depends:.*libc6 ' 'Depends:.*libhdf5' 'Depends:.*zlib1g' 'shlibs' 'postinst'
control libplxutils-dev 'Depends: libplxutils0 \(= '
control plxconvert 'Depends:.*libc6 ' 'Depends:.*libplxutils0 \(= '

library=$(dirname "$(find "$scratch/usr/lib" -name libPLXUtils.so.0)")
LD_LIBRARY_PATH=$library "$scratch/usr/bin/plxconvert" modflow "$root/examples/valley/valley.nam" --outputs none \
    --dest "$scratch/results" > "$scratch/out" 2>&1 || true
[ -s "$scratch/results/GENERAL/node_coordinates.xyz" ] || { cat "$scratch/out"; fail "the tool wrote no mesh"; }
echo "packages in $folder are good"
