# SPDX-License-Identifier: MIT
set -l keys isInactiveRAMHide isReleasableSTORAGEShow preventCleanRAMFromWidget refreshSeconds chartcolor
set -l caches thumbnails fontconfig gstreamer samba vlc babl gegl gnome-software pip yarn go-build ccache sccache
set -a caches firefox chromium google-chrome epiphany huggingface torch ms-playwright puppeteer electron winetricks bazel jetbrains
set -l commands list get set reset describe watch path
complete -c vantor -f
complete -c vantor -n __fish_use_subcommand -a open -d 'Show the window'
complete -c vantor -n __fish_use_subcommand -a ram -d 'Show what the RAM ring is made of'
complete -c vantor -n __fish_use_subcommand -a storage -d 'Show what the storage ring is made of'
complete -c vantor -n __fish_use_subcommand -a cpu -d 'Show what the CPU ring is made of'
complete -c vantor -n __fish_use_subcommand -a clean -d 'Give back what is not needed'
complete -c vantor -n __fish_use_subcommand -a settings -d 'Read and change preferences'
complete -c vantor -n __fish_use_subcommand -l version -d 'Print the version and end'
complete -c vantor -l help -d 'Print what there is and end'
set -l first "__fish_seen_subcommand_from settings; and not __fish_seen_subcommand_from $commands"
complete -c vantor -n $first -a list -d 'Show every preference'
complete -c vantor -n $first -a get -d 'Print the value that holds'
complete -c vantor -n $first -a set -d 'Change a preference'
complete -c vantor -n $first -a reset -d 'Go back to the usual value'
complete -c vantor -n $first -a describe -d 'Tell what a preference does'
complete -c vantor -n $first -a watch -d 'Print a line for each change'
complete -c vantor -n $first -a path -d 'Print where the preference file is'
complete -c vantor -n '__fish_seen_subcommand_from get set reset describe watch' -a "$keys"
complete -c vantor -n '__fish_seen_subcommand_from set' -a 'true false automatic'
complete -c vantor -n '__fish_seen_subcommand_from ram storage cpu list watch; and not __fish_seen_subcommand_from clean' -l json -d 'Write it for programs'
complete -c vantor -n '__fish_seen_subcommand_from get' -l stored -d 'Fail where nothing is stored'
complete -c vantor -n '__fish_seen_subcommand_from reset' -l all -d 'All of them'
complete -c vantor -n '__fish_seen_subcommand_from set reset' -l set-aside -d 'Keep a broken file under another name'
set -l what '__fish_seen_subcommand_from clean; and not __fish_seen_subcommand_from ram trash caches'
complete -c vantor -n $what -a trash -d 'Empty the trash'
complete -c vantor -n $what -a ram -d 'Move idle memory to swap'
complete -c vantor -n $what -a caches -d 'Delete caches that come back'
complete -c vantor -n '__fish_seen_subcommand_from caches' -a "$caches"
complete -c vantor -n '__fish_seen_subcommand_from trash' -l older-than -x -d 'Only what is so many days old'
complete -c vantor -n '__fish_seen_subcommand_from clean; and __fish_seen_subcommand_from ram trash caches' -l dry-run -d 'Only say what would be done'
complete -c vantor -n '__fish_seen_subcommand_from trash caches' -l yes -d 'Do not ask'
