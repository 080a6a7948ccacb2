#!/usr/bin/env bash
# Looks for faults that compilers do not see: clang-tidy by .clang-tidy and cppcheck without what
# tools/cppcheck.supp explains. Prints what is found; the exit code is 1 then.
# Usage: tools/lint.sh [--tidy | --cppcheck] [--jobs N] [--build FOLDER] [FILE...]
#   --tidy, --cppcheck  only one of the two
#   --jobs N            number of files at once (default: the number of processors)
#   --build FOLDER      build folder with compile_commands.json (default: build/dev)
#   FILE                sources to look at (default: all of src, app, examples and fuzz that the build compiles)
set -euo pipefail
exec < /dev/null

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build/dev
jobs=$(nproc)
tidy=yes
cppcheck=yes
files=()
while [ $# -gt 0 ]; do
    case $1 in
        --tidy) cppcheck=no ;;
        --cppcheck) tidy=no ;;
        --jobs) jobs=${2:?--jobs needs a number}; shift ;;
        --build) build=${2:?--build needs a folder}; shift ;;
        -h | --help) sed -n '2,8s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"; exit 0 ;;
        -*) echo "lint.sh: unknown option $1" >&2; exit 2 ;;
        *) files+=("$(realpath "$1")") ;;
    esac
    shift
done
"$root/tools/install_packages.sh" lint >&2
if [ ! -f "$build/compile_commands.json" ]; then
    echo "lint.sh: $build has no compile_commands.json; configure it (cmake --preset dev)" >&2
    exit 2
fi
build=$(realpath "$build")
cd "$root"

# Sources of the other system are in no list of commands here.
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(
    sed -n 's/^ *"file": "\(.*\.cpp\)",\{0,1\}$/\1/p' "$build/compile_commands.json" | sort -u |
        grep -E "^$root/(src|app|examples|fuzz)/")

found=0
if [ "$tidy" = yes ]; then
    # What is said of suppressed warnings goes away with the error stream, and so do its own errors: those are
    # shown by their exit code, of which xargs makes 123.
    errors=$(mktemp)
    trap 'rm -f "$errors"' EXIT
    if ! printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$jobs" \
        clang-tidy -p "$build" --quiet --warnings-as-errors='*' 2> "$errors"; then
        grep -v -E '^[0-9]+ warnings? (generated|treated)' "$errors" || true
        found=1
    fi
fi
if [ "$cppcheck" = yes ]; then
    # Inside the root, so that the list of known findings fits.
    cppcheck --std=c++20 --language=c++ --enable=warning,performance,portability --error-exitcode=1 --quiet \
        -I include -I src -I app -j "$jobs" --suppressions-list=tools/cppcheck.supp \
        "${files[@]#"$root"/}" 2>&1 || found=1
fi
exit "$found"
