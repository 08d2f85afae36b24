#!/usr/bin/env bash
# Grabs the windows and dialogs for a person to look at: tests/shots/grab.sh [FOLDER]  (default build/shots)
# Needs build/kestrune, and Xvfb, openbox, xdotool and ImageMagick's import for the dialogs.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
out=${1:-$root/build/shots}
picture=$root/install/Samples/hills.png
program=$root/build/kestrune
mkdir -p "$out"

for scale in 1 1.25 1.5 2; do
  mkdir -p "$out/scale-$scale"
  QT_SCALE_FACTOR=$scale QT_QPA_PLATFORM=offscreen "$program" --script "$root/tests/shots/windows.txt" "$out/scale-$scale" "$picture"
done

# The filters: a contact sheet of one picture, and their dialogs with the preview drawn, in both themes.
filters=$(mktemp -d)
QT_QPA_PLATFORM=offscreen "$program" --script "$root/tests/shots/filters.txt" "$filters" "$picture"
montage -label '%t' "$filters"/*.ppm -thumbnail 240x180 -geometry +8+8 "$out/filters.png"
rm -rf "$filters"
for theme in light dark; do
  for scale in 1 2; do
    folder=$out/filter-dialogs-$theme-$scale
    mkdir -p "$folder"
    QT_SCALE_FACTOR=$scale QT_QPA_PLATFORM=offscreen KESTRUNE_SHOTS=$folder KESTRUNE_SHOTS_THEME=$theme \
      "$root/build/filters_gui_shell_tests" --gtest_filter='DialogShots.*' > /dev/null
  done
done

# Dialogs are grabbed from a real screen: a script answers them before they show.
dialogs=$out/dialogs
home=$(mktemp -d)
mkdir -p "$dialogs"
exec {display}<> <(:)
Xvfb -displayfd "$display" -screen 0 1280x800x24 > /dev/null 2>&1 &
xvfb=$!
trap 'kill $editor $xvfb 2> /dev/null; rm -rf "$home"' EXIT
editor=
read -r -u "$display" number
export DISPLAY=:$number HOME=$home XDG_CONFIG_HOME=$home
openbox > /dev/null 2>&1 &
"$program" "$picture" > /dev/null 2>&1 &
editor=$!
sleep 5

# name, the keys that open it
while read -r name keys; do
  xdotool key $keys
  sleep 1.5
  import -window root "$dialogs/$name.png"
  xdotool key Escape
  sleep 0.5
done <<'LIST'
new ctrl+n
open ctrl+o
save-as ctrl+shift+s
export ctrl+shift+e
print ctrl+p
levels ctrl+l
curves ctrl+m
hue ctrl+u
balance ctrl+b
resize alt+i s
canvas-size alt+i c
index-colors alt+i e Down Down Return
menu-image alt+i
menu-file alt+f
menu-edit alt+e
menu-view alt+v
menu-select alt+s
menu-filter alt+t
menu-window alt+w
LIST
echo "shots in $out"
