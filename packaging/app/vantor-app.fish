# SPDX-License-Identifier: MIT
complete -c vantor-app -f
complete -c vantor-app -l page -x -a 'ram storage processor settings' -d 'Show this page'
complete -c vantor-app -l appearance -x -a 'auto light dark' -d 'Colours'
complete -c vantor-app -l snapshot -r -F -a 'ram storage processor settings' -d 'Draw a page into a file and end'
complete -c vantor-app -l scale -x -d 'Pixels per point in the file'
complete -c vantor-app -l demo -d 'Show a made-up machine'
complete -c vantor-app -l help -d 'List the options'
complete -c vantor-app -l version -d 'Say which version this is'
