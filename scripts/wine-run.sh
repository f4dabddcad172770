#!/usr/bin/env bash
# Runs a cross-built program under Wine, in a prefix below build/wine: the one that
# VELKOR_WINE_PREFIX names, so that programs of different prefixes can run side by side.
#   scripts/wine-run.sh PROGRAM [ARGUMENT...]   runs it and answers with its exit code
#   scripts/wine-run.sh --fresh                 begins with a new copy of the prefix, and no other
#   scripts/wine-run.sh --wait                  waits for the end of every program in the prefix
#   scripts/wine-run.sh --stop                  ends every program in all prefixes
# Windows are drawn nowhere; those of a prefix that VELKOR_WINE_DISPLAY (as :99) is given with from
# its beginning are shown on that display. VELKOR_WINE_FOLDER is the place of the prefixes where it is
# not build/wine.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=${VELKOR_WINE_FOLDER:-$root/build/wine}
template=$folder/template
seconds=${VELKOR_WINE_TIMEOUT:-280}

mkdir -p "$folder/home"
export HOME=$folder/home
prefixes=$folder/prefixes
export WINEPREFIX=$prefixes/${VELKOR_WINE_PREFIX:-common}
export WINEARCH=win64
# Also silences the advice to install 32-bit Wine, which is not wanted.
export WINEDEBUG=${WINEDEBUG:--all}
# No .NET, no HTML engine, no entries in this desktop's menus, and no debugger: a crash would start
# one and hang.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d;winedbg.exe=d"
unset DISPLAY
[[ -z ${VELKOR_WINE_DISPLAY:-} ]] || export DISPLAY=$VELKOR_WINE_DISPLAY

# draw_by PREFIX DRIVER: null, by which windows, dialogs and menus work without a display, or x11.
draw_by() {
  WINEPREFIX=$1 timeout 60 wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d "$2" /f
}

# wineserver PREFIX ARGUMENT...: Wine's server, which Debian keeps outside the search path.
wineserver() {
  WINEPREFIX=$1 PATH=$PATH:/usr/lib/wine timeout 60 wineserver64 "${@:2}"
}

stop_all() {
  local prefix
  for prefix in "$prefixes"/*/; do
    [[ ! -d $prefix ]] || wineserver "${prefix%/}" -k 2>/dev/null || true
  done
}

make_template() {
  local version
  version=$(wine64 --version 2>/dev/null || wine --version 2>/dev/null)
  [[ -f $template/made-by && $(<"$template/made-by") == "$version" ]] && return
  rm -rf "$template"
  WINEPREFIX=$template timeout 180 wine wineboot -i
  draw_by "$template" null
  wineserver "$template" -w
  echo "$version" >"$template/made-by"
}

ensure_prefix() {
  exec 9>"$folder/lock"
  flock 9
  if [[ ! -f $WINEPREFIX/made-by ]]; then
    make_template >"$folder/make.log" 2>&1 </dev/null 9>&- ||
      { echo "wine-run.sh: no Wine prefix could be made:" >&2; cat "$folder/make.log" >&2; exit 1; }
    rm -rf "$WINEPREFIX"
    mkdir -p "$prefixes"
    cp -a "$template" "$WINEPREFIX"
    [[ -z ${DISPLAY:-} ]] || draw_by "$WINEPREFIX" x11 >/dev/null 2>&1 </dev/null 9>&-
    # The first program of another locale writes it down for those that follow, itself not among them.
    timeout 60 wine cmd /c exit >/dev/null 2>&1 </dev/null 9>&- || true
  fi
  exec 9>&-
}

case ${1:-} in
  "") sed -n '2,10p' "${BASH_SOURCE[0]}" >&2; exit 2 ;;
  --stop)
    stop_all
    exit 0 ;;
  --wait)
    ensure_prefix
    wineserver "$WINEPREFIX" -w
    exit 0 ;;
  --fresh)
    stop_all
    rm -rf "$prefixes"
    ensure_prefix
    exit 0 ;;
esac

ensure_prefix
code=0
timeout --kill-after=10 "$seconds" wine "$@" </dev/null || code=$?
if [[ $code == 124 || $code == 137 ]]; then
  echo "wine-run.sh: $1 was stopped after $seconds seconds" >&2
fi
exit "$code"
