# SPDX-License-Identifier: MIT
# bash completion for vantor-term
_vantor_term() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words
  # "--option=value" comes as three words.
  [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
  [[ $current == = ]] && previous=${COMP_WORDS[COMP_CWORD - 1]} current=
  case $previous in
  --format) words='text json waybar prometheus' ;;
  --field) words='ram storage cpu network' ;;
  --color) words='auto always never 8 16 256 24bit' ;;
  --appearance) words='auto light dark' ;;
  --glyphs) words='solid braille sextant octant block ascii' ;;
  --node)
    mapfile -t COMPREPLY < <(compgen -A hostname -- "$current")
    return
    ;;
  --sort) words='worst name ram storage cpu network' ;;
  --demo-fleet | --every | --group-by | --machine | --prometheus | --select)
    COMPREPLY=()
    return
    ;;
  --log | --nodes | --output)
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
    return
    ;;
  *) words='--once --watch --interval --output --format --field --demo --demo-fleet --node --nodes --prometheus --select --fleet --machine --every --group-by --sort --compact --expanded --no-mouse --color --appearance --glyphs --log --help --version' ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _vantor_term vantor-term
