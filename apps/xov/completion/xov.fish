# fish completion for xov

set -l commands section panels stack three drum monitor xy scatter hist map grid fk info resources
set -l drawing section panels stack three drum monitor xy scatter hist map grid fk
set -l images grid fk
set -l seismograms section panels stack three drum monitor fk info
set -l tables xy scatter hist

complete -c xov -s h -l help -d 'Print help'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -f
complete -c xov -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a section -d 'Draw seismograms as a record section'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a panels -d 'Draw pairs of seismograms in small panels'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a stack -d 'Draw seismograms over each other or in bands'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a three -d 'Draw the three components of a station'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a drum -d 'Draw a continuous recording in rows'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a monitor -d 'Play recordings on a real-time display'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a xy -d 'Draw two columns of numbers as a line'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a scatter -d 'Draw two columns of numbers as circles'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a hist -d 'Draw or print a column of numbers as a histogram'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a map -d 'Draw events, stations, vectors and plate boundaries on a map'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a grid -d 'Draw a grid of values as a coloured picture'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a fk -d 'Draw the beam power of an array over slowness'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a info -d 'List what seismogram files hold'
complete -c xov -n "not __fish_seen_subcommand_from $commands" -a resources -d 'List base maps and plate boundaries, or import boundaries'

complete -c xov -n "__fish_seen_subcommand_from $drawing" -s o -l output -r -d 'Write the plot to this file'
complete -c xov -n "__fish_seen_subcommand_from $drawing" -l size -x -d 'Width and height in points'
complete -c xov -n "__fish_seen_subcommand_from $drawing" -l scale -x -d 'Pixels a point in pictures'
complete -c xov -n "__fish_seen_subcommand_from $drawing" -l title -x -d 'Title of the plot'

complete -c xov -n '__fish_seen_subcommand_from section panels monitor' -l gain -x -d 'Enlarge traces by this factor'
complete -c xov -n '__fish_seen_subcommand_from section' -l zero-lines -d 'Draw a dotted zero line through each trace'
complete -c xov -n '__fish_seen_subcommand_from section' -l raw -d 'Draw samples as they are, with their mean'
complete -c xov -n '__fish_seen_subcommand_from section' -l sort -x -a 'distance azimuth name' -d 'Order from the bottom up'

complete -c xov -n "__fish_seen_subcommand_from $seismograms" -l channels -x -d 'Read these channels only'

complete -c xov -n '__fish_seen_subcommand_from stack' -l style -x -a 'overlay bands' -d 'Traces over each other or in bands'
complete -c xov -n '__fish_seen_subcommand_from stack' -l fill -d 'Fill what overlaid traces enclose'
complete -c xov -n '__fish_seen_subcommand_from stack' -l raw -d 'Draw samples as they are, with their mean'
complete -c xov -n '__fish_seen_subcommand_from stack' -l fixed-x -x -d 'Ends of the time axis'
complete -c xov -n '__fish_seen_subcommand_from stack' -l fixed-y -x -d 'Ends of the amplitude axis'

complete -c xov -n '__fish_seen_subcommand_from three' -l components -x -d 'Codes of the components'
complete -c xov -n '__fish_seen_subcommand_from three' -l self-scaled -d 'Let each trace fill its panel'
complete -c xov -n '__fish_seen_subcommand_from three' -l peaks -d 'Print the largest amplitude of each trace'
complete -c xov -n '__fish_seen_subcommand_from three' -l raw -d 'Draw samples as they are, with their mean'

complete -c xov -n '__fish_seen_subcommand_from drum' -l rows -x -d 'Number of rows'
complete -c xov -n '__fish_seen_subcommand_from drum' -l row-duration -x -d 'Seconds a row'
complete -c xov -n '__fish_seen_subcommand_from drum' -l gain -x -d 'Half row heights that the largest sample rises'
complete -c xov -n '__fish_seen_subcommand_from drum' -l mag -x -d 'Smallest magnitude of marked events'
complete -c xov -n '__fish_seen_subcommand_from drum' -l zero-lines -d 'Draw a thin zero line through each row'
complete -c xov -n '__fish_seen_subcommand_from drum' -l hours -d 'Count the time scale in hours'
complete -c xov -n '__fish_seen_subcommand_from drum monitor' -l events -r -d 'Mark the events of this file'

complete -c xov -n '__fish_seen_subcommand_from monitor' -l replay -r -d 'Files to play'
complete -c xov -n '__fish_seen_subcommand_from monitor' -l speed -x -d 'Recorded seconds a second'
complete -c xov -n '__fish_seen_subcommand_from monitor' -l span -x -d 'Seconds on the display'
complete -c xov -n '__fish_seen_subcommand_from monitor' -l origin -x -a 'left right' -d 'Edge that minutes count from'
complete -c xov -n '__fish_seen_subcommand_from monitor' -l at -x -d 'Begin at this recorded time'
complete -c xov -n '__fish_seen_subcommand_from monitor' -l zone-name -d 'Write the local time with the name of its zone'

complete -c xov -n "__fish_seen_subcommand_from $tables" -l columns -x -d 'Columns to draw'
complete -c xov -n "__fish_seen_subcommand_from $tables" -l xlabel -x -d 'Label of the X axis'
complete -c xov -n "__fish_seen_subcommand_from $tables" -l ylabel -x -d 'Label of the Y axis'

complete -c xov -n '__fish_seen_subcommand_from scatter' -l diameter -x -d 'Diameter of the circles in points'

complete -c xov -n '__fish_seen_subcommand_from hist' -l bins -x -d 'Number of bins'
complete -c xov -n '__fish_seen_subcommand_from hist' -l min -x -d 'Lower end of the range of the bins'
complete -c xov -n '__fish_seen_subcommand_from hist' -l max -x -d 'Upper end of the range of the bins'
complete -c xov -n '__fish_seen_subcommand_from hist' -l remove-mean -d 'Subtract the mean of the values from them first'
complete -c xov -n '__fish_seen_subcommand_from hist' -l dump -d 'Print the bins as text'

complete -c xov -n '__fish_seen_subcommand_from map' -l topo -r -d 'Colour elevations of a grid'
complete -c xov -n '__fish_seen_subcommand_from map' -l topo-size -x -d 'Rows and columns of the grid file'
complete -c xov -n '__fish_seen_subcommand_from map' -l topo-extent -x -d 'What the grid file covers'
complete -c xov -n '__fish_seen_subcommand_from map' -l image -x -a '0 1 2 3 4 10' -d 'Background picture'
complete -c xov -n '__fish_seen_subcommand_from map' -l region -x -d 'What to show'
complete -c xov -n '__fish_seen_subcommand_from map' -l plates -x -a 'bird types' -d 'Plate boundaries'
complete -c xov -n '__fish_seen_subcommand_from map' -l polygons -r -d 'NXY files of lines'
complete -c xov -n '__fish_seen_subcommand_from map' -l events -r -d 'QuakeML or CSV file of earthquakes'
complete -c xov -n '__fish_seen_subcommand_from map' -l colors -x -a 'seis nogreen polar red' -d 'Colours of depths'
complete -c xov -n '__fish_seen_subcommand_from map' -l stations -r -d 'File of stations'
complete -c xov -n '__fish_seen_subcommand_from map' -l station-columns -x -d 'Columns of the stations'
complete -c xov -n '__fish_seen_subcommand_from map' -l vectors -r -d 'File of vectors'
complete -c xov -n '__fish_seen_subcommand_from map' -l vector-columns -x -d 'Columns of the vectors'
complete -c xov -n '__fish_seen_subcommand_from map' -l vector-scale -x -d 'Points a unit'
complete -c xov -n '__fish_seen_subcommand_from map' -l align -x -a 'centre top bottom' -d 'Where a low map stands'

complete -c xov -n "__fish_seen_subcommand_from $images" -l palette -x -a '0 1 2 3 4' -d 'Colours'
complete -c xov -n "__fish_seen_subcommand_from $images" -l shades -x -d 'Number of colour levels'
complete -c xov -n "__fish_seen_subcommand_from $images" -l inverted -d 'Turn each colour into its complement'
complete -c xov -n '__fish_seen_subcommand_from fk' -l xyz -r -d 'Write the grid to this file, too'

complete -c xov -n '__fish_seen_subcommand_from grid' -l rows -x -d 'Rows of a headerless grid'
complete -c xov -n '__fish_seen_subcommand_from grid' -l columns -x -d 'Columns of a headerless grid'
complete -c xov -n '__fish_seen_subcommand_from grid' -l type -x -a 'int16 float32' -d 'Cells of a headerless grid'
complete -c xov -n '__fish_seen_subcommand_from grid' -l byte-order -x -a 'little big' -d 'Byte order of a headerless grid'
complete -c xov -n '__fish_seen_subcommand_from grid' -l extent -x -d 'Limits of the axes'
complete -c xov -n '__fish_seen_subcommand_from grid' -l min -x -d 'Value at the first colour'
complete -c xov -n '__fish_seen_subcommand_from grid' -l max -x -d 'Value at the last colour'
complete -c xov -n '__fish_seen_subcommand_from grid' -l topo -d 'Colour values as elevations in metres'
complete -c xov -n '__fish_seen_subcommand_from grid' -l peak -d 'Mark the largest value'
complete -c xov -n '__fish_seen_subcommand_from grid' -l xlabel -x -d 'Label of the X axis'
complete -c xov -n '__fish_seen_subcommand_from grid' -l ylabel -x -d 'Label of the Y axis'

complete -c xov -n '__fish_seen_subcommand_from fk' -l stations -r -d 'Lines of a station code and its place'
complete -c xov -n '__fish_seen_subcommand_from fk' -l band -x -d 'Lowest and highest frequency in Hz'
complete -c xov -n '__fish_seen_subcommand_from fk' -l window -x -d 'Time to use in seconds'
complete -c xov -n '__fish_seen_subcommand_from fk' -l limit -x -d 'Largest slowness in s/km'
complete -c xov -n '__fish_seen_subcommand_from fk' -l steps -x -d 'Slownesses along each axis'

complete -c xov -n '__fish_seen_subcommand_from resources' -l pb2002 -r -d 'Import the published text of PB2002'
