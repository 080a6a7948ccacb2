#!/usr/bin/env bash
# Builds the fuzz targets with Clang and runs each for some seconds, as many at once as there are processors. A line
# for each tells its executions and the edges of the code that its inputs reach; findings are kept below
# build/fuzz/findings. The last line is "PASSED FAILED" in numbers.
#
# Usage: tools/fuzz.sh SECONDS [--jobs N] [--seed N] [--build FOLDER] [TARGET...]
#   --jobs N        number of targets that run at once (default: the number of processors)
#   --seed N        of the random numbers (default: 1)
#   --build FOLDER  another build folder than build/fuzz
#   TARGET          heads, tin, ... (default: all)
# Inputs that were found useful stay in the build folder (corpus) and are where the next run starts.
set -euo pipefail
exec < /dev/null

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc)
seed=1
build=$root/build/fuzz
targets=()
[ $# -gt 0 ] || { sed -n '2,12s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2; exit 2; }
seconds=$1
shift
while [ $# -gt 0 ]; do
    case $1 in
        --jobs) jobs=${2:?--jobs needs a number}; shift ;;
        --seed) seed=${2:?--seed needs a number}; shift ;;
        --build) build=${2:?--build needs a folder}; shift ;;
        -*) echo "fuzz.sh: unknown option $1" >&2; exit 2 ;;
        *) targets+=("$1") ;;
    esac
    shift
done
[[ $seconds =~ ^[1-9][0-9]*$ ]] || { echo "fuzz.sh: $seconds is no number of seconds" >&2; exit 2; }

# The readers have no business with more than this, in MiB and seconds.
limits=(-rss_limit_mb=1024 -malloc_limit_mb=512 -timeout=10)
# Short call stacks of memory blocks and a small quarantine make runs twice as fast; so does the simpler choice of
# the next input, where a run takes less than a millisecond.
asan=malloc_context_size=6:quarantine_size_mb=16
limits+=(-entropic=0)

dictionary_of() {
    case $1 in
        array_records | basic_package | block_centered_flow | discretization | transport_package) echo modflow ;;
        name_file | super_file | mt3d_settings | visual_modflow) echo names ;;
        heads | flows | link_file | concentrations | gms_binary_datasets) echo results ;;
        lines | tokens_and_tags | world_and_gcp_files) echo words ;;
        hdf5_project) echo hdf5 ;;
        *) echo gms ;;
    esac
}

# fuzz TARGET: its output goes to logs/TARGET.log and its exit code to logs/TARGET.status.
fuzz() {
    local name=$1 status=0 corpus=("$build/corpus/$1" "$build/seeds/$1")
    # Inputs that once were findings.
    [ ! -d "$root/tests/data/regressions/$name" ] || corpus+=("$root/tests/data/regressions/$name")
    local extra=() asan_extra=
    if [ "$name" = hdf5_project ]; then
        # HDF5 asks for what a damaged file announces, and gives up when there is not so much or nothing to read.
        extra=(-malloc_limit_mb=-1)
        asan_extra=:allocator_may_return_null=1
    fi
    mkdir -p "$build/corpus/$name"
    ASAN_OPTIONS=$ASAN_OPTIONS$asan_extra "$build/fuzz/fuzz_$name" "${limits[@]}" "${extra[@]}" -seed="$seed" -max_total_time="$seconds" -print_final_stats=1 \
        -dict="$root/fuzz/dictionaries/$(dictionary_of "$name").dict" \
        -artifact_prefix="$build/findings/$name-" "${corpus[@]}" > "$logs/$name.log" 2>&1 || status=$?
    echo "$status" > "$logs/$name.status"
}

# report TARGET: adds to passed and failed.
report() {
    local name=$1 log=$logs/$1.log status executions edges
    status=$(cat "$logs/$name.status" 2> /dev/null || echo none)
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
    edges=$(grep -a -o 'cov: [0-9]*' "$log" | tail -n 1 | sed 's/cov: //' || true)
    printf '%-22s %9s executions, %5s edges' "$name" "${executions:-no}" "${edges:-no}"
    if [ "$status" = 0 ] && [ -n "$executions" ]; then
        passed=$((passed + 1))
        echo
        return
    fi
    failed=$((failed + 1))
    echo ", FAILED with $status"
    grep -a -v -E '^#[0-9]+.*cov:' "$log" | tail -n 40
}

if [ -z "${PLX_FUZZ_BUILT:-}" ]; then
    "$root/tools/install_packages.sh" build fuzz
    (cd "$root" && cmake --preset fuzz -B "$build" && cmake --build "$build" --target fuzz --parallel "$jobs") >&2
fi
python3 "$root/fuzz/make_seeds.py" "$build/examples/valley/valley_solver" "$build/seeds" >&2

logs=$build/logs
rm -rf "$logs" "$build/findings"
mkdir -p "$logs" "$build/findings"
# Files of the runs: in memory, all lower-case because the library keeps names so.
memory=/dev/shm
[ -d "$memory" ] || memory=$build
PLX_FUZZ_FOLDER=$memory/plx_fuzzing_$$
mkdir -p "$PLX_FUZZ_FOLDER"
trap 'rm -rf "$PLX_FUZZ_FOLDER"' EXIT
export PLX_FUZZ_FOLDER
export UBSAN_OPTIONS=print_stacktrace=1 LSAN_OPTIONS=suppressions=$root/fuzz/leaks.supp:print_suppressions=0

[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(cd "$root/fuzz" && printf '%s\n' *.cpp | sed 's/\.cpp$//')
# Leaks cannot be looked for where a process may not trace its own threads; everything else still can.
if ASAN_OPTIONS=detect_leaks=1 "$build/fuzz/fuzz_${targets[0]}" -runs=1 2>&1 | grep -q 'LeakSanitizer has encountered'; then
    limits+=(-detect_leaks=0)
    asan+=:detect_leaks=0
fi
export ASAN_OPTIONS=$asan

passed=0
failed=0
running=0
for target in "${targets[@]}"; do
    if [ "$running" -ge "$jobs" ]; then
        wait -n || true
        running=$((running - 1))
    fi
    fuzz "$target" &
    running=$((running + 1))
done
wait
for target in "${targets[@]}"; do report "$target"; done
echo "$passed $failed"
[ "$failed" -eq 0 ]
