# Completion of plxconvert for bash.

# Files whose extension, in lower or upper case, is one of those given, and folders.
_plxconvert_files() {
    local name ending
    compopt -o filenames 2> /dev/null
    COMPREPLY=()
    while IFS= read -r name; do
        ending=${name##*.}
        if [[ -d $name || " $* " == *" ${ending,,} "* ]]; then COMPREPLY+=("$name"); fi
    done < <(compgen -f -- "$cur")
}

# Words that follow the last comma of what was typed.
_plxconvert_list() {
    local done=''
    [[ $cur != *,* ]] || done=${cur%,*},
    compopt -o nospace 2> /dev/null
    mapfile -t COMPREPLY < <(compgen -P "$done" -W "$*" -- "${cur##*,}")
}

_plxconvert_words() { mapfile -t COMPREPLY < <(compgen -W "$*" -- "$cur"); }

# Values of the option before the cursor; false when it has none.
_plxconvert_value() {
    case $command:$prev in
        modflow:--kind) _plxconvert_words auto modflow modflow2000 gms gms_hdf5 visual ;;
        modflow:--outputs)
            _plxconvert_list elevation geo_layer head_nodes ccf elev_top elev_bottom material porosity head_cells \
                boundary_flows mt3d all none
            ;;
        modflow:--rules) _plxconvert_words modflow prescribed ;;
        gms:--rules) _plxconvert_words modern prescribed ;;
        gms:--types) _plxconvert_list modflow mt3d femwater image scat3d scat2d grid2d tin borehole all ;;
        modflow:--dest | gms:--dest) _plxconvert_files ;;
        interpolate:--onto) _plxconvert_files nam mfn mfs gpr vmf ;;
        interpolate:-o | interpolate:--output) _plxconvert_files pff pfz ;;
        interpolate:--method) _plxconvert_words 1 2 ;;
        'georef '*:--type) _plxconvert_words 1 2 3 4 5 6 7 ;;
        'georef fit':--plot) _plxconvert_files svg ;;
        'georef gcp':--points) _plxconvert_files txt csv dat ;;
        modflow:--porosity | modflow:--crop | gms:--extents | gms:--time | interpolate:--grid | interpolate:--box | \
            interpolate:--value | interpolate:--power | interpolate:--reach | interpolate:--depth | \
            interpolate:--anisotropy | interpolate:--dl-factor | interpolate:--nondetect | 'georef gcp':--size) ;;
        *) return 1 ;;
    esac
}

_plxconvert_options() {
    case $command in
        '') _plxconvert_words --version --help -h ;;
        info) _plxconvert_words --json --help -h ;;
        modflow)
            _plxconvert_words --kind --outputs --porosity --compress --crop --dest --rules --trace --quiet --help -h
            ;;
        gms)
            _plxconvert_words --dest --plain --subfolders --types --extents --time --rules --quiet --json --help -h
            ;;
        interpolate)
            _plxconvert_words --onto --grid --box --output -o --value --method --power --reach --depth --anisotropy \
                --dl-factor --nondetect --compress --quiet --help -h
            ;;
        georef | 'georef show') _plxconvert_words --help -h ;;
        'georef fit') _plxconvert_words --type --prescribed --json --plot --help -h ;;
        'georef project') _plxconvert_words --type --prescribed --reverse --help -h ;;
        'georef world') _plxconvert_words --type --prescribed --help -h ;;
        'georef gcp') _plxconvert_words --points --size --help -h ;;
    esac
}

_plxconvert() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} command='' word
    # Bash takes "--option=value" apart at the "=".
    [[ $cur != = ]] || cur=''
    [[ $prev != = ]] || prev=${COMP_WORDS[COMP_CWORD - 2]}
    local images=(png jpg jpeg tif tiff bmp)
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $command:$word in
            :info | :modflow | :gms | :interpolate | :georef) command=$word ;;
            georef:fit | georef:project | georef:world | georef:gcp | georef:show) command="georef $word" ;;
        esac
    done
    COMPREPLY=()
    if [[ $prev == -* ]] && _plxconvert_value; then
        return
    elif [[ $cur == -* ]]; then
        _plxconvert_options
        return
    fi
    case $command in
        '') _plxconvert_words info modflow gms interpolate georef ;;
        georef) _plxconvert_words fit project world gcp show ;;
        modflow) _plxconvert_files nam mfn mfs gpr vmf ;;
        gms) _plxconvert_files gpr ;;
        interpolate) _plxconvert_files csv tsv txt dat ;;
        'georef fit' | 'georef project') _plxconvert_files gcp ;;
        'georef world') _plxconvert_files gcp "${images[@]}" ;;
        'georef gcp' | 'georef show') _plxconvert_files "${images[@]}" ;;
    esac
    # Result files have any name: for "info" and where nothing fits, bash offers all files.
}

complete -o bashdefault -o default -F _plxconvert plxconvert
