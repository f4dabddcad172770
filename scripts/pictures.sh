#!/usr/bin/env bash
# Takes the pictures of README.md and docs anew, from the sample calendar: the year, the window, the
# print preview and, under Wine, the control. Builds what it needs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

year=$(date +%Y)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_CACHE_HOME=$folder XDG_CONFIG_HOME=$folder QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
export VELKOR_WINE_PREFIX=pictures

for preset in linux mingw; do cmake --preset "$preset" >/dev/null; done
cmake --build --preset linux --target yearplan yearplan-pictures
cmake --build --preset mingw --target OutlookVelkor vkrRefresh StandInCalendar TryOutForm
tools=build/linux/bin
windows=build/mingw/bin

"$tools/yearplan" render samples/team.ics --year "$year" --size 1800x1150 -o docs/pictures/team-2026.png
"$tools/yearplan-pictures" samples/team.ics "$year" "$folder"
cp "$folder/window.png" "$folder/preview.png" docs/pictures/

scripts/wine-run.sh "$windows/StandInCalendar.exe" /register
scripts/wine-run.sh "$windows/vkrRefresh.exe" /RegServer
scripts/wine-run.sh regsvr32 /s "$windows/OutlookVelkor.ocx"
drive=Z:${folder//\//\\}
scripts/wine-run.sh "$windows/TryOutForm.exe" "$drive\\windows.vbs" "$drive\\windows.bmp"
"$tools/yearplan-pictures" "$folder/windows.bmp" docs/pictures/windows.png
scripts/wine-run.sh --stop
