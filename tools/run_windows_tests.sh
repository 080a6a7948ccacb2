#!/usr/bin/env bash
# Runs the Windows test programs of a build folder under Wine, each as a whole because starting one costs more than
# most tests. Shows what failed; the last line is "PASSED FAILED SKIPPED" in numbers.
#
# A program finds its arguments, one a line, in a file beside it (test_x.args).
#
# Usage: tools/run_windows_tests.sh BUILD_FOLDER LOG_FOLDER [JOBS]
#        tools/run_windows_tests.sh --prepare BUILD_FOLDER
#   --prepare  only make Wine's folders, which takes long the first time
set -euo pipefail
exec < /dev/null

# With seconds to spare on a busy machine.
time_limit=300

wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
wineserver=$(command -v wineserver || echo /usr/lib/wine/wineserver)

# wine_environment BUILD_FOLDER: Wine's folders are below the build, and it neither asks nor shows anything.
wine_environment() {
    mkdir -p "$1/wine"
    WINEPREFIX=$(cd "$1/wine" && pwd)
    export WINEPREFIX WINEDEBUG=-all LC_ALL=C.UTF-8 WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
    unset DISPLAY WAYLAND_DISPLAY
    # A server that stays, so that programs do not wait for its start, but not for ever.
    "$wineserver" -p60 > /dev/null 2>&1 || true
}

# run PROGRAM LOG_FOLDER: services that Wine starts keep the streams of the first program, so these are files.
run() {
    local name status=0 arguments=()
    name=$(basename "$1" .exe)
    [ ! -e "${1%.exe}.args" ] || mapfile -t arguments < "${1%.exe}.args"
    timeout --kill-after=10 "$time_limit" "$wine" "$1" "${arguments[@]}" > "$2/$name.log" 2>&1 || status=$?
    echo "$status" > "$2/$name.status"
}

number() { sed -nE "s/^\[  $2 \] ([0-9]+) tests?[.,].*/\1/p" "$1" | tail -n 1; }

# report PROGRAM LOG_FOLDER: adds to passed, failed and skipped.
report() {
    local name log status good bad left
    name=$(basename "$1" .exe)
    log=$2/$name.log
    status=$(cat "$2/$name.status" 2> /dev/null || echo none)
    # Windows ends lines with two characters.
    sed -i 's/\r$//' "$log"
    if ! grep -q '^\[==========\] .* ran\.' "$log"; then
        # A program with one test, or one that ended before its tests did.
        if [ "$status" = 0 ] && ! grep -q '^\[==========\]' "$log"; then
            passed=$((passed + 1))
            echo "  $name: good"
        else
            failed=$((failed + 1))
            tail -n 40 "$log"
            echo "  $name: FAILED, ended with $status"
        fi
        return
    fi
    good=$(number "$log" 'PASSED ') bad=$(number "$log" 'FAILED ') left=$(number "$log" 'SKIPPED')
    if [ -n "$bad" ]; then
        grep -v -E '^(\[( RUN      |       OK |-+|=+)\].*)?$' "$log" | tail -n 150
    elif [ "$status" != 0 ]; then
        bad=1
        tail -n 20 "$log"
        echo "  $name: ended with $status after its tests"
    fi
    passed=$((passed + ${good:-0}))
    failed=$((failed + ${bad:-0}))
    skipped=$((skipped + ${left:-0}))
    echo "  $name: ${good:-0} passed, ${bad:-0} failed, ${left:-0} skipped"
}

case ${1:-} in
    --prepare)
        wine_environment "${2:?a build folder is needed}"
        timeout --kill-after=10 "$time_limit" "$wine" wineboot.exe --init > "$WINEPREFIX.log" 2>&1
        exit
        ;;
    --run)
        run "$2" "$3"
        exit
        ;;
esac

build=${1:?a build folder is needed}
logs=${2:?a folder for logs is needed}
jobs=${3:-$(nproc)}
mkdir -p "$logs"
wine_environment "$build"
passed=0 failed=0 skipped=0
programs=("$build"/bin/test_*.exe)
[ -e "${programs[0]}" ] || { echo "There are no test programs in $build/bin" >&2; exit 1; }
for program in "${programs[@]}"; do rm -f "$logs/$(basename "$program" .exe)".{log,status}; done
# The long ones first.
# shellcheck disable=SC2011
ls -S "${programs[@]}" | xargs -d '\n' -P "$jobs" -I{} "${BASH_SOURCE[0]}" --run {} "$logs"
for program in "${programs[@]}"; do report "$program" "$logs"; done
"$wineserver" -k > /dev/null 2>&1 || true
echo "$passed $failed $skipped"
