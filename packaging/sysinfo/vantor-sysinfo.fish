# SPDX-License-Identifier: MIT
complete -c vantor-sysinfo -f
complete -c vantor-sysinfo -l json -d 'Answer in JSON'
complete -c vantor-sysinfo -l no-gpu -d 'Do not ask the graphics device'
complete -c vantor-sysinfo -l record -r -F -d 'Write what the machine answered to a file'
complete -c vantor-sysinfo -l replay -r -F -d 'Answer from a recording'
complete -c vantor-sysinfo -l verbose -d 'Show log lines on standard error'
complete -c vantor-sysinfo -l version -d 'Show the version'
complete -c vantor-sysinfo -s h -l help -d 'Show help'
complete -c vantor-sysinfo -n __fish_use_subcommand -a uname -d 'Print the system names'
complete -c vantor-sysinfo -n __fish_use_subcommand -a sysctl -d 'Print kernel values'
set -l in_uname '__fish_seen_subcommand_from uname'
complete -c vantor-sysinfo -n $in_uname -s a -l all -d 'All of -snrvm'
complete -c vantor-sysinfo -n $in_uname -s m -l machine -d Machine
complete -c vantor-sysinfo -n $in_uname -s n -l nodename -d 'Network name'
complete -c vantor-sysinfo -n $in_uname -s o -l operating-system -d 'Operating system'
complete -c vantor-sysinfo -n $in_uname -s p -l processor -d 'Kind of processor'
complete -c vantor-sysinfo -n $in_uname -s r -l kernel-release -d Release
complete -c vantor-sysinfo -n $in_uname -s s -l kernel-name -d 'Kernel name'
complete -c vantor-sysinfo -n $in_uname -s v -l kernel-version -d Version
set -l in_sysctl '__fish_seen_subcommand_from sysctl'
complete -c vantor-sysinfo -n $in_sysctl -l tree -r -d 'Everything at or below a name'
complete -c vantor-sysinfo -n $in_sysctl -a '(vantor-sysinfo sysctl --tree hw 2>/dev/null | string replace -r " = .*" "")'
complete -c vantor-sysinfo -n $in_sysctl -a '(vantor-sysinfo sysctl --tree kern 2>/dev/null | string replace -r " = .*" "")'
