# SPDX-License-Identifier: MIT
# shellcheck shell=bash
_vantor_app() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  case $previous in
    --appearance) mapfile -t COMPREPLY < <(compgen -W 'auto light dark' -- "$current") ;;
    --page | --snapshot) mapfile -t COMPREPLY < <(compgen -W 'ram storage processor settings' -- "$current") ;;
    --scale) COMPREPLY=() ;;
    ram | storage | processor | settings) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
    *)
      mapfile -t COMPREPLY < <(compgen -W '--appearance --demo --help --page --scale --snapshot --version' -- "$current")
      ;;
  esac
}
complete -o filenames -F _vantor_app vantor-app
