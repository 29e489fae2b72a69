# SPDX-License-Identifier: MIT
_vantor_sysinfo() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command="" each
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $each == uname || $each == sysctl ]] && command=$each
    done
    if [[ $before == --record || $before == --replay ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
    fi
    local words="--json --no-gpu --record --replay --verbose --version --help"
    case $command in
        uname) words+=" -a -m -n -o -p -r -s -v --all --machine --nodename --operating-system --processor
            --kernel-release --kernel-name --kernel-version" ;;
        sysctl)
            words+=" --tree"
            if [[ $word != -* ]]; then
                words=$(vantor-sysinfo sysctl --tree "${word%%.*}" 2>/dev/null | cut -d ' ' -f 1)
                [[ $word != *.* ]] && words="hw. kern. machdep. abi. debug. dev. fs. kernel. net. user. vm."
            fi ;;
        *) words+=" uname sysctl" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    [[ ${#COMPREPLY[@]} == 1 && ${COMPREPLY[0]} == *. ]] && compopt -o nospace
}
complete -F _vantor_sysinfo vantor-sysinfo
