# SPDX-License-Identifier: MIT
# shellcheck shell=bash
_vantor_widget() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  case $previous in
    --appearance) mapfile -t COMPREPLY < <(compgen -W 'auto light dark' -- "$current") ;;
    --autostart) mapfile -t COMPREPLY < <(compgen -W 'on off' -- "$current") ;;
    --snapshot) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
    --anchor) mapfile -t COMPREPLY < <(compgen -W 'top-left top top-right left center right bottom-left bottom bottom-right' -- "$current") ;;
    --node) mapfile -t COMPREPLY < <(compgen -A hostname -- "$current") ;;
    --nodes) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
    --sort) mapfile -t COMPREPLY < <(compgen -W 'worst name ram storage cpu network' -- "$current") ;;
    --demo-fleet | --every | --group-by | --machine | --margin | --prometheus | --scale | --select) COMPREPLY=() ;;
    *)
      mapfile -t COMPREPLY < <(compgen -W '--anchor --appearance --autostart --compact --demo --demo-fleet --every --expanded --fleet
        --frameless --group-by --help --hidden --machine --margin --node --nodes --on-desktop --on-top --prometheus --scale
        --select --snapshot --sort --tray --version --warn-memory' -- "$current")
      ;;
  esac
}
complete -o filenames -F _vantor_widget vantor-widget
