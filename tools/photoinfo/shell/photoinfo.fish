# Completion of photoinfo's command line for fish.

set -l commands summary info batch orientation tag xmp preview tags lens copy scan report \
    crop-factor canonical doctor
set -l none "not __fish_seen_subcommand_from $commands"

complete -c photoinfo -n $none -f
complete -c photoinfo -n $none -a summary -d 'Camera, lens, exposure, date and rating'
complete -c photoinfo -n $none -a info -d 'The lens, how it was set, and the sensor'
complete -c photoinfo -n $none -a batch -d 'Exposure values'
complete -c photoinfo -n $none -a orientation -d 'How photos have to be turned'
complete -c photoinfo -n $none -a tag -d 'One tag in every form'
complete -c photoinfo -n $none -a xmp -d 'The XMP properties'
complete -c photoinfo -n $none -a preview -d 'Write an embedded preview into a file'
complete -c photoinfo -n $none -a tags -d 'Tags as exiftool prints them'
complete -c photoinfo -n $none -a lens -d 'The name of the lens'
complete -c photoinfo -n $none -a copy -d 'Copy metadata into an exported image'
complete -c photoinfo -n $none -a scan -d 'Every photo below a folder'
complete -c photoinfo -n $none -a report -d 'Write a page about a folder'
complete -c photoinfo -n $none -a crop-factor -d 'The crop factor of a camera'
complete -c photoinfo -n $none -a canonical -d 'The forms under which names compare'
complete -c photoinfo -n $none -a doctor -d 'Try out the tools'

complete -c photoinfo -s h -l help -d 'Print a help message'
complete -c photoinfo -l help-all -d 'Print the help messages of all commands'
complete -c photoinfo -n $none -l version -d 'Print the version'
complete -c photoinfo -l tools -x -a '(__fish_complete_directories)' -d 'The folder of the tools'
complete -c photoinfo -l verbose -d 'Show the log and the messages of the tools'

set -l with_json summary info batch orientation tag xmp preview tags lens scan crop-factor canonical \
    doctor
complete -c photoinfo -n "__fish_seen_subcommand_from $with_json" -l json -d 'One JSON document'
complete -c photoinfo -n '__fish_seen_subcommand_from preview report' -s o -l output -r \
    -d 'The file to write'
complete -c photoinfo -n '__fish_seen_subcommand_from preview' -l size -x -d 'Least pixels'
complete -c photoinfo -n '__fish_seen_subcommand_from copy' -l software -x -d 'The software'
complete -c photoinfo -n '__fish_seen_subcommand_from copy' -l rating -x -d 'Stars, or -1'
complete -c photoinfo -n '__fish_seen_subcommand_from copy' -l x-resolution -x -d 'Pixels a unit'
complete -c photoinfo -n '__fish_seen_subcommand_from copy' -l y-resolution -x -d 'Pixels a unit'
complete -c photoinfo -n '__fish_seen_subcommand_from copy' -l unit -x -a 'none inch cm' -d 'The unit'
complete -c photoinfo -n '__fish_seen_subcommand_from scan report' -l jobs -x -d 'At the same time'
complete -c photoinfo -n '__fish_seen_subcommand_from scan report' -l all -d 'Every file'
complete -c photoinfo -n '__fish_seen_subcommand_from scan' -l csv -d 'Comma-separated values'
complete -c photoinfo -n '__fish_seen_subcommand_from scan report' -x -a \
    '(__fish_complete_directories)'
