#!/usr/bin/env bash
# Shows the control in a container that is not ours: a form of Lazarus, built for 64-bit Windows from
# Debian's sources, under Wine on a display of its own. Takes the picture build/containers/lazarus.png;
# fails when the form reads back what it did not set, or does not end.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LC_ALL=C.UTF-8 VELKOR_WINE_PREFIX=containers VELKOR_WINE_TIMEOUT=120

scripts/packages.sh windows containers
cmake --preset mingw >/dev/null
cmake --build --preset mingw --target OutlookVelkor vkrRefresh StandInCalendar

folder=$PWD/build/containers
windows=build/mingw/bin
sources=$(echo /usr/share/fpcsrc/*)
forms=$(echo /usr/lib/lazarus/*)
mkdir -p "$folder/units"

# compile OPTION... SOURCE: warnings of sources that are not ours stay in a file.
compile() {
  fpc -Twin64 -n -O2 -v0 "-FU$folder/units" "$@" >"$folder/compiler.log" ||
    { tail -n 20 "$folder/compiler.log" >&2; return 1; }
}

# The compiler's own library: its first unit, then all others.
if [[ ! -f $folder/units/classes.ppu ]]; then
  (
    cd "$sources/rtl/win64"
    own=(-Fi../{inc,x86_64,win,win/wininc,objpas,objpas/sysutils,objpas/classes})
    own+=(-Fu../{inc,win,x86_64,objpas})
    compile "${own[@]}" -Us -Sg system.pp
    compile "${own[@]}" buildrtl.pp
  )
fi

places=()
for package in rtl-objpas rtl-extra rtl-generics rtl-unicode fcl-base fcl-process fcl-image fcl-xml \
  fcl-json fcl-registry fcl-res pasjpeg paszlib hash chm winunits-base regexpr; do
  for part in "$sources/packages/$package/src"{,/win,/win64,/inc,/x86_64}; do
    [[ ! -d $part ]] || places+=("-Fu$part" "-Fi$part")
  done
done
for part in components/{lazutils,freetype,activex} lcl{,/include,/forms,/widgetset,/interfaces/win32}; do
  places+=("-Fu$forms/$part" "-Fi$forms/$part")
done
compile -MObjFPC -Scghi -dLCL -dLCLwin32 "${places[@]}" "-FE$folder" tests/containers/LazarusForm.pas

rm -f "$folder"/{display,told,lazarus.png}
Xvfb -displayfd 7 -screen 0 1100x720x24 7>"$folder/display" 2>"$folder/display.log" &
display=$!
trap 'scripts/wine-run.sh --stop; kill "$display"' EXIT

# await FILE PATTERN: up to a minute, until the file has such a line.
await() {
  for ((i = 0; i < 60; i++)); do
    ! grep -q "$2" "$1" || return 0
    sleep 1
  done
  echo "containers.sh: $1 never told $2" >&2
  return 1
}
touch "$folder"/{display,told}
await "$folder/display" .
VELKOR_WINE_DISPLAY=:$(<"$folder/display")
export VELKOR_WINE_DISPLAY

scripts/wine-run.sh "$windows/StandInCalendar.exe" /register
scripts/wine-run.sh "$windows/vkrRefresh.exe" /RegServer
scripts/wine-run.sh regsvr32 /s "$windows/OutlookVelkor.ocx"
scripts/wine-run.sh "$folder/LazarusForm.exe" 20 >"$folder/told" &
form=$!
await "$folder/told" DisplaySubject
# The year is read in the background.
sleep 10
DISPLAY=$VELKOR_WINE_DISPLAY import -window root "$folder/lazarus.png"
wait "$form" || { cat "$folder/told" >&2; exit 1; }
cat "$folder/told"
echo "The picture: $folder/lazarus.png"
