# SPDX-License-Identifier: MIT
# bash completion for vantor
_vantor() {
  local current=${COMP_WORDS[COMP_CWORD]} words='' keys caches
  keys='isInactiveRAMHide isReleasableSTORAGEShow preventCleanRAMFromWidget refreshSeconds chartcolor'
  caches='thumbnails fontconfig gstreamer samba vlc babl gegl gnome-software pip yarn go-build ccache sccache'
  caches+=' firefox chromium google-chrome epiphany huggingface torch ms-playwright puppeteer electron winetricks bazel jetbrains'
  if ((COMP_CWORD == 1)); then
    words='open ram storage cpu clean settings --help --version'
  elif [[ ${COMP_WORDS[1]} == @(ram|storage|cpu) ]]; then
    words='--json --help'
  elif [[ ${COMP_WORDS[1]} == open ]]; then
    words=--help
  elif [[ ${COMP_WORDS[1]} == clean ]]; then
    case $COMP_CWORD:${COMP_WORDS[2]} in
    2:*) words='ram trash caches --help' ;;
    *:trash) words='--older-than --dry-run --yes --help' ;;
    *:caches) words="$caches --dry-run --yes --help" ;;
    *:ram) words='--dry-run --help' ;;
    esac
  elif ((COMP_CWORD == 2)); then
    words='list get set reset describe watch path --help'
  else
    case ${COMP_WORDS[2]} in
    list) words=--json ;;
    get) words="$keys --stored" ;;
    set)
      case $COMP_CWORD:${COMP_WORDS[3]} in
      3:*) words=$keys ;;
      4:is* | 4:prevent*) words='true false' ;;
      4:chartcolor) words=automatic ;;
      esac
      [[ $current == -* || $COMP_CWORD == 5 ]] && words=--set-aside
      ;;
    reset) words="$keys --all --set-aside" ;;
    describe) words=$keys ;;
    watch) words="$keys --json" ;;
    esac
    [[ $current == -* ]] && words+=' --help'
  fi
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _vantor vantor
