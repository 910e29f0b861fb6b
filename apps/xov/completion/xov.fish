# fish completion for xov

set -l commands section xy info
set -l drawing section xy

complete -c xov -s h -l help -d 'Print help'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -f
complete -c xov -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a section -d 'Draw seismograms as a record section'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a xy -d 'Draw two columns of numbers as a line'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a info -d 'List what seismogram files hold'

complete -c xov -n "__fish_seen_subcommand_from $drawing" -s o -l output -r -d 'Write the plot to this file'
complete -c xov -n "__fish_seen_subcommand_from $drawing" -l size -x -d 'Width and height in points'
complete -c xov -n "__fish_seen_subcommand_from $drawing" -l scale -x -d 'Pixels a point in pictures'
complete -c xov -n "__fish_seen_subcommand_from $drawing" -l title -x -d 'Title of the plot'

complete -c xov -n '__fish_seen_subcommand_from section' -l gain -x -d 'Enlarge traces by this factor'
complete -c xov -n '__fish_seen_subcommand_from section' -l zero-lines -d 'Draw a dotted zero line through each trace'
complete -c xov -n '__fish_seen_subcommand_from section' -l sort -x -a 'distance azimuth name' -d 'Order from the bottom up'

complete -c xov -n '__fish_seen_subcommand_from xy' -l columns -x -d 'Columns to draw'
complete -c xov -n '__fish_seen_subcommand_from xy' -l xlabel -x -d 'Label of the X axis'
complete -c xov -n '__fish_seen_subcommand_from xy' -l ylabel -x -d 'Label of the Y axis'
