#!/bin/bash
# Draws every view from the example data, as PNG and as PDF, and a page that shows them:
#   scripts/gallery.sh XOV_PROGRAM EXAMPLE_DATA OUTPUT_FOLDER
#   scripts/gallery.sh --rows    only says what it would draw
# Nothing is drawn when the output is newer than the program, the data and this script.
set -eu
script=$(realpath "$0")

# One row a picture: file name|caption|arguments of xov as in a shell, with paths and patterns below the example data.
rows() {
  cat <<'ROWS'
section-vertical|A record section: vertical components of one event at twelve stations, nearest below, with picks|section section/*.BHZ.SAC --sort distance
section-zero-lines|The same by name, traces half as high over their zero lines|section section/*.BHZ.SAC --sort name --gain 0.5 --zero-lines
section-distance-axis|By distance along an axis, the lobes above the zero lines filled|section section/*.BHZ.SAC --distance-axis degrees --wiggle-fill positive --scale-bar
section-reduced|The same in kilometres, times reduced by the velocity of surface waves, each trace scaled by its own peak|section section/*.BHZ.SAC --distance-axis km --reduce 3.9 --scaling trace --start -300 --end 900
section-aligned|By azimuth, aligned on P|section section/*.BHZ.SAC --azimuth-axis --align P --start -20 --end 100 --scaling trace --wiggle-fill both
section-three-components|Three components at one station|section section/XX.HERN.00.BH?.SAC
section-components|Three components at two stations, a colour for each component|section section/XX.{HERN,KITE}.00.BH{Z,N,E}.SAC --color-by component --legend
section-one|One record with its picks|section section/XX.DOVE.00.BHZ.SAC
section-filtered|Vertical components from a minute before P on, filtered|section section/*.BHZ.SAC --filter bandpass 0.02 0.1 --zero-phase --around P -60 600 --sort distance
panels|Pairs of records in panels: 15 minutes of data, and in red those of a model with another rupture|panels panels/*.SAC
stack-overlay|Records over each other: three stations|stack section/XX.{FINK,RAIL,HERN}.00.BHZ.SAC
stack-colors|Records over each other in a colour each, with a legend|stack section/XX.{FINK,RAIL,HERN}.00.BHZ.SAC --legend --line-width 0.75
stack-fill|One record, what it encloses filled, from the origin time on|stack section/XX.GULL.00.BHZ.SAC --fill --fixed-x 0 3000
stack-bands|Records in bands: five components of one station|stack section/XX.KITE.00.BH?.SAC --style bands
three|Three components of a station with their picks|three section/XX.KITE.00.BH{Z,R,T}.SAC
three-self-scaled|The same with each trace filling its panel, and peaks|three section/XX.KITE.00.BH?.SAC --components BHZ BHN BHE --self-scaled --peaks
motion|The path of the ground in the first minute of P, and its polarisation|motion section/XX.KITE.00.BH[ZNE].SAC --filter bandpass 0.02 0.1 --around P -5 60
motion-rotated|The same over radial and transverse components|motion section/XX.KITE.00.BH[ZNE].SAC --filter bandpass 0.02 0.1 --rotate ZRT --around P -5 60
drum|A drum record of a day: local earthquakes, a distant one, a gap, and markers|drum day/*.SAC --events day/catalogue.csv
drum-colors|Half a day in three colours, UTC and local time, traces held to a row with marks, and labelled events|drum day/*.SAC --start 2025-03-12T11:30:00 --end 2025-03-12T23:30:00 --row-colors 'black,#0072b2,#009e73' --local-time America/Los_Angeles --clip 0.5 --line-width 0.6 --events day/catalogue.csv --event-labels
drum-six-hours|The same in rows of six hours at a lower gain over zero lines|drum day/*.SAC --row-duration 21600 --gain 2 --zero-lines --hours --events day/catalogue.csv --mag 5
monitor|A real-time display, an hour after a large distant earthquake|monitor day/*.SAC --at 2025-03-12T15:00:00 --span 5400 --events day/catalogue.csv
monitor-left|Three channels that have arrived, minutes counted from the left|monitor section/XX.KITE.00.BH{E,N,Z}.SAC --origin left --span 3600 --zone-name
spectrogram-day|A day as a spectrogram: the noise of the working day, local earthquakes, a distant one, a gap|spectrogram day/*.SAC
spectrogram-log|An earthquake over a logarithmic frequency axis|spectrogram section/XX.HERN.00.BHZ.SAC --log-frequency --window 60
spectrum-stations|Power spectra of one earthquake at three stations, multitaper, smoothed|spectrum section/XX.{FINK,RAIL,HERN}.00.BHZ.SAC --method multitaper --smooth konno-ohmachi
spectrum-noise|The noise of a day between Peterson's models|spectrum day/*.SAC --noise-models --smooth konno-ohmachi
ppsd|How often the noise of a day has which power|ppsd day/*.SAC
xy-travel-times|A line plot: travel times against distance|xy xy_travel_times.txt --xlabel 'Distance (degrees)' --ylabel 'Travel time (s)' --title 'P in IASP91, source at 24 km'
xy-group-velocity|A line plot: group velocity against period|xy xy_group_velocity.txt --xlabel 'Period (s)' --ylabel 'Group velocity (km/s)' --title 'Rayleigh waves'
xy-log-axis|The same over a logarithmic axis|xy xy_group_velocity.txt --log-x --xlabel 'Period (s)' --ylabel 'Group velocity (km/s)' --title 'Rayleigh waves'
scatter-durations|A scatter plot: duration of earthquakes against magnitude|scatter xy_source_durations.csv --diameter 8 --title '400 made-up earthquakes'
hist-magnitudes|A histogram: magnitudes, each unit holding a tenth as many as the one below|hist xy_source_durations.csv --title '400 made-up earthquakes'
hist-log-counts|The same with logarithmic counts: a straight flank|hist xy_source_durations.csv --log-y --title '400 made-up earthquakes'
hist-durations|A histogram about the mean, its range given|hist xy_source_durations.csv --columns 2 --remove-mean --bins 30 --min -1 --max 1.5 --xlabel 'Logarithm of duration, less the mean' --title '400 made-up earthquakes'
mechanism-plane|A thrust from strike, dip and rake|mechanism --strike 203 --dip 10 --rake 88 --color '#c02020'
mechanism-tensor|A moment tensor that is mostly a dipole, the planes of its best double couple over it|mechanism --tensor 2e18 -1e18 -1e18 3e17 5e17 1e17
grid-palette-0|A grid in palette 0|grid grid_residuals.txt --xlabel 'Longitude' --ylabel 'Latitude' --title 'Residuals (s), palette 0'
grid-palette-1|The same in palette 1, its peak marked|grid grid_residuals.txt --palette 1 --peak --xlabel 'Longitude' --ylabel 'Latitude' --title 'Residuals (s), palette 1'
grid-palette-2|In palette 2|grid grid_residuals.txt --palette 2 --xlabel 'Longitude' --ylabel 'Latitude' --title 'Residuals (s), palette 2'
grid-palette-3|In palette 3, in twelve shades|grid grid_residuals.txt --palette 3 --shades 12 --xlabel 'Longitude' --ylabel 'Latitude' --title 'Residuals (s), palette 3'
grid-palette-4|In palette 4|grid grid_residuals.txt --palette 4 --xlabel 'Longitude' --ylabel 'Latitude' --title 'Residuals (s), palette 4'
grid-dawn|In the palette dawn, with its colour bar|grid grid_residuals.txt --palette dawn --color-bar 'Residual (s)' --xlabel 'Longitude' --ylabel 'Latitude' --title 'Residuals'
grid-inverted|In palette 0, inverted|grid grid_residuals.txt --inverted --xlabel 'Longitude' --ylabel 'Latitude' --title 'Residuals (s), palette 0, inverted'
grid-relief|A headerless grid of elevations|grid grid_relief.i2 --rows 181 --columns 241 --topo --extent -20 -16 63 66 --xlabel 'Longitude' --ylabel 'Latitude' --title 'A made-up island'
fk-grid|Beam power over slowness, from a grid|fk fk_plane_wave.txt
fk-recordings|Beam power of the recordings of an array|fk array/*.SAC --band 1 3 --window 12 24
fk-decibels|The same in decibels, circles in seconds per degree|fk array/*.SAC --band 1 3 --window 12 24 --decibels -15 --circle-labels degrees --palette viridis --color-bar 'Power (dB)' --size 696 600
map-world|A world map: plate boundaries and a made-up catalogue, coloured by depth|map --image 2 --plates types --events map/world_catalogue.csv --title 'Made-up earthquakes of ten years'
map-pacific|Around the Pacific, on a topography|map --topo --region 120 290 -60 60 --plates types --events map/world_catalogue.csv --title 'Made-up earthquakes of ten years'
map-mechanisms|Mechanisms of the larger earthquakes of the west Pacific, coloured by depth|map --image 2 --region 110 190 -25 60 --plates types --events map/world_mechanisms.xml --mechanisms --title 'Made-up earthquakes of ten years'
map-elevations|Elevations with their colour bar|map --topo --region 120 290 -60 60 --color-bar 'Elevation (m)'
map-regional|A regional map: a made-up fault and velocities beside it|map --image 10 --region -125 -113 31 42 --vectors map/velocities.txt --polygons map/fault.nxy map/network.nxy --title 'Made-up velocities, the longest 35 mm/a'
ROWS
}

[ "$1" = --rows ] && rows && exit
xov=$1 data=$2 output=$3

page_head='<!doctype html>
<html lang="en"><head><meta charset="utf-8"><title>XOV Graphics gallery</title>
<style>
body { font-family: Helvetica, "Nimbus Sans", sans-serif; margin: 2em auto; max-width: 62em; color: #222 }
figure { margin: 0 0 3em } img { max-width: 100%; border: 1px solid #ccc } figcaption { margin-bottom: .5em }
code { color: #666; font-size: .85em }
</style></head><body>
<h1>XOV Graphics</h1>'

escaped() { sed 's/&/\&amp;/g; s/</\&lt;/g; s/>/\&gt;/g' <<<"$1"; }

figure() {
  local name=$1 caption=$2 arguments=$3
  printf '<figure id="%s"><figcaption>%s (<a href="%s.pdf">PDF</a>)<br><code>xov %s</code></figcaption>\n' \
    "$name" "$(escaped "$caption")" "$name" "$(escaped "$arguments")"
  printf '<a href="%s.pdf"><img src="%s.png" alt="%s"></a></figure>\n' "$name" "$name" "$(escaped "$caption")"
}

up_to_date() {
  local index=$output/index.html library
  library=$(ldd "$xov" | awk '$1 ~ /^libXOV_Graphics/ { print $3 }')
  [ "$index" -nt "$xov" ] && [ "$index" -nt "$library" ] && [ "$index" -nt "$script" ] &&
    [ "$index" -nt "$data/complete" ]
}

if up_to_date; then
  echo "nothing has changed"
  exit 0
fi

# Everything is drawn aside first: a gallery is either whole or the one before.
mkdir -p "$(dirname "$output")"
output=$(realpath -m "$output")
new=$output.new
rm -rf "$new"
mkdir "$new"
cd "$data"
total=$(rows | wc -l) done=0
{
  echo "$page_head"
  while IFS='|' read -r name caption arguments; do
    done=$((done + 1))
    echo "[$done/$total] $name" >&2
    words=()
    eval "words=($arguments)"
    for kind in png pdf; do
      QT_QPA_PLATFORM=offscreen "$xov" "${words[@]}" -o "$new/$name.$kind" >&2
    done
    figure "$name" "$caption" "$arguments"
  done < <(rows)
  echo '</body></html>'
} >"$new/page"
mv "$new/page" "$new/index.html"
rm -rf "$output"
mv "$new" "$output"
