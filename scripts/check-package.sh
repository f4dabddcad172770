#!/usr/bin/env bash
# Makes the Windows package, signed by a certificate made for the moment, and tries it under Wine as
# its users would: pages and files, the scripts of the zip, and the installer for one user and for
# everybody: installed, upgraded, refused while the control is in use, taken back when it fails,
# resumed when it was stopped, removed. Registry and files are the same before and after.
#   scripts/check-package.sh           both word sizes, in the root of scripts/windows32.sh
#   scripts/check-package.sh --64      the 64-bit part alone, under the machine's own Wine
#   scripts/check-package.sh --short   the same, installed and removed once
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mode=${1:-both}
case $mode in
  both) run=("$PWD/scripts/windows32.sh" --run "$PWD/scripts/wine-run.sh"); wine=build/windows32/wine ;;
  --64 | --short)
    run=("$PWD/scripts/wine-run.sh"); wine=build/wine
    export VELKOR_WORD_SIZES=64 VELKOR_SETUP_STUB=amd64-unicode ;;
  *) sed -n '2,9p' "${BASH_SOURCE[0]}" >&2; exit 2 ;;
esac
export VELKOR_WINE_PREFIX=package LC_ALL=C.UTF-8
prefix=$PWD/$wine/prefixes/package
drive=$prefix/drive_c

folder=$(mktemp -d)
held=
trap '[[ -z $held ]] || kill "$held" 2>/dev/null || true; rm -rf "$folder"' EXIT

die() {
  echo "check-package.sh: $*" >&2
  exit 1
}

# wine_answers CODE COMMAND...: fails unless the command ends with that code; $output is what it said.
wine_answers() {
  local wanted=$1 code=0
  shift
  output=$("${run[@]}" "$@" 2>&1) || code=$?
  ((code == wanted)) || die "$* answered $code instead of $wanted: $output"
}

# says TEXT: fails unless the last command said so.
says() {
  [[ $output == *"$1"* ]] || die "no \"$1\" in: $output"
}

# snapshot NAME: registry and files but for what Wine itself writes whenever it starts.
snapshot() {
  "${run[@]}" --wait
  { for part in system user; do
      echo "$part"
      sed -E -e '/^#time=/d' -e 's/^(\[.*\]) [0-9]+$/\1/' "$prefix/$part.reg" |
        awk -v own='^\\[(Console|System.*(Class|Enum|Video).*)\\]$' '/^\[/ { skip = $0 ~ own } !skip'
    done
    (cd "$drive" && find . -path ./windows/temp -prune -o -path './users/*/Temp' -prune -o -print |
      sort && find . -type f -not -path './users/*/Temp/*' -not -path './windows/*' -exec sha256sum {} + |
      sort -k 2); } >"$folder/$1"
}
# is_same NAME WHAT: fails unless registry and files are as in the snapshot of that name.
is_same() {
  snapshot now
  cmp -s "$folder/$1" "$folder/now" || die "$2 changed: $(diff "$folder/$1" "$folder/now" | head -n 40)"
}

check_pages() {
  local page link target
  while read -r page; do
    while read -r link; do
      [[ $link != http* ]] || continue
      target=$(dirname "$page")/${link%%#*}
      [[ $link != \#* ]] || target=$page
      [[ -f $target ]] || die "$page: $link leads nowhere"
      [[ $link != *#* ]] || grep -q "id=\"${link#*#}\"" "$target" || die "$page: $link leads nowhere"
    done < <(grep -oE '(href|src)="[^"]*"' "$page" | sed -E 's/^[a-z]+="(.*)"$/\1/')
    ! grep -nE 'XDG|\.cache/|--help|<!--' "$page" || die "$page tells of another system"
  done < <(find . -name '*.html')
  [[ -z $(find . -type d -empty) ]] || die "empty folders: $(find . -type d -empty)"
  while read -r page; do
    ! grep -qv $'\r$' "$page" || die "$page: lines without CR LF"
  done < <(find . -name '*.cmd' -o -name '*.vbs' -o -name '*.txt')
}

check_programs() {
  local program words
  while read -r program; do
    osslsigncode verify -CAfile "$VELKOR_SIGN_ROOTS" -in "$program" >/dev/null 2>&1 ||
      die "$program is not signed"
    words=$(strings -el "$program")
    for word in "OutlookVelkor" "$version" "MIT licence" CompanyName; do
      [[ $words == *"$word"* ]] || die "$program does not tell $word"
    done
  done < <(find . -name '*.exe' -o -name '*.ocx')
}

# The scripts of the zip, in a folder with a blank.
check_scripts() {
  local way
  for way in "" machine; do
    snapshot before
    wine_answers 0 cmd /c Register.cmd $way
    says "is registered"
    if [[ $way == machine ]]; then
      # Programs under Wine see the machine's registration only.
      for size in "${sizes[@]}"; do
        wine_answers 0 "$size-bit/TryOutForm.exe" TryOut.vbs
        says "The year is drawn in"
      done
      if ((${#sizes[@]} > 1)); then
        wine_answers 0 'C:\windows\syswow64\regsvr32.exe' /s /u 32-bit/OutlookVelkor.ocx
        wine_answers 0 64-bit/TryOutForm.exe TryOut.vbs
      fi
    fi
    wine_answers 0 cmd /c Unregister.cmd $way
    says "not registered any more"
    is_same before "Register.cmd and Unregister.cmd $way:"
  done
}

# hold: the try-out form shows the control until release is called. One user's classes are unknown
# to programs under Wine, so there the form itself is what is in use.
hold() {
  local form=$unpacked/64-bit/TryOutForm.exe
  [[ -n ${1:-} ]] || form=$place/64-bit/TryOutForm.exe
  "${run[@]}" "$form" "$(windows_path hold.vbs)" "$(windows_path held)" >"$folder/hold.log" 2>&1 &
  held=$!
  for ((i = 0; i < 150; ++i)); do
    [[ ! -f $folder/held ]] || return 0
    sleep 0.2
  done
  die "the try-out form does not start: $(<"$folder/hold.log")"
}
windows_path() {
  local path=$folder/$1
  echo "Z:${path//\//\\}"
}
release() {
  rm "$folder/held"
  wait "$held" || true
  held=
}

remove() {
  wine_answers 0 "$place/Uninstall.exe" /S
  is_same before "Installing and removing $*:"
}

# check_setup [/AllUsers]
check_setup() {
  snapshot before
  wine_answers 0 "$setup" /S "$@"
  place=$(compgen -G "$drive/${placed[${1:-user}]}") || die "nothing is installed"
  windows=${place#"$drive/"}
  [[ -f $place/64-bit/OutlookVelkor.ocx && -f $place/docs/help.html ]] || die "nothing at $place"
  wine_answers 0 reg query "${hive[${1:-user}]}\\$entry" /s /reg:64
  for word in DisplayName "$version" Publisher DisplayIcon EstimatedSize QuietUninstallString; do
    says "$word"
  done
  wine_answers 0 reg query "${hive[${1:-user}]}\\Software\\Classes\\OutlookVelkor.YearPlan\\CLSID" /reg:64
  osslsigncode verify -CAfile "$VELKOR_SIGN_ROOTS" -in "$place/Uninstall.exe" >/dev/null 2>&1 ||
    die "the uninstaller is not signed"
  if [[ $mode == --short ]]; then
    remove "$@"
    return
  fi

  # A file of an older version goes with an upgrade, one of the user stays.
  echo 'docs\older.html'$'\r' >>"$place/Files.lst"
  touch "$place/docs/older.html" "$place/docs/mine.html"
  wine_answers 0 "$setup" /S "$@"
  [[ ! -f $place/docs/older.html && -f $place/docs/mine.html ]] || die "the upgrade mixed up files"
  rm "$place/docs/mine.html"

  snapshot installed
  hold "$@"
  wine_answers 3 "$setup" /S "$@"
  says "TryOutForm.exe (process "
  # Wine puts quotation marks around an argument with a blank, where the option must have none.
  if [[ $windows == *" "* ]]; then
    wine_answers 0 "$place/Uninstall.exe" /S
  else
    wine_answers 3 "$place/Uninstall.exe" /S "_?=C:\\${windows//\//\\}"
  fi
  release
  is_same installed "A refused upgrade:"

  # A file that is nobody's is not replaced.
  sed -i '/^TryOut/d' "$place/Files.lst"
  snapshot installed
  wine_answers 2 "$setup" /S "$@"
  says "Everything is as it was"
  is_same installed "A failed upgrade:"
  rm "$place/TryOut.vbs"

  # One that was stopped half-way.
  mkdir -p "$place/old~/64-bit"
  mv "$place/64-bit/vkrRefresh.exe" "$place/old~/64-bit"
  mv "$place/Files.lst" "$place/old~"
  wine_answers 0 "$setup" /S "$@"
  [[ -f $place/64-bit/vkrRefresh.exe && ! -e $place/old~ ]] || die "a stopped upgrade is not resumed"
  remove "$@"
}

openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=OutlookVelkor check" \
  -addext extendedKeyUsage=codeSigning -keyout "$folder/key.pem" -out "$folder/certificate.pem" 2>/dev/null
export VELKOR_SIGN_CERTIFICATE=$folder/certificate.pem VELKOR_SIGN_KEY=$folder/key.pem
export VELKOR_SIGN_ROOTS=$folder/certificate.pem
version=$(sed -n 's/^project(OutlookVelkor VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
read -ra sizes <<<"${VELKOR_WORD_SIZES:-64 32}"
entry='Software\Microsoft\Windows\CurrentVersion\Uninstall\OutlookVelkor'
declare -A hive=([user]=HKCU [/AllUsers]=HKLM)
declare -A placed=([user]="users/*/AppData/Local/Programs/OutlookVelkor"
  [/AllUsers]="Program Files/OutlookVelkor")
cat >"$folder/hold.vbs" <<'VBS'
Dim files, steps
Set files = CreateObject("Scripting.FileSystemObject")
On Error Resume Next
Form.Place
Form.Wait 1000
files.CreateTextFile(Form.Argument(0)).Close
For steps = 1 To 600
  If Not files.FileExists(Form.Argument(0)) Then Exit For
  Form.Wait 200
Next
VBS

./package.sh "$folder/package.zip"
setup=$folder/package-Setup.exe
mkdir "$folder/year planner"
(cd "$folder/year planner" && cmake -E tar xf ../package.zip)
root=$PWD
unpacked=$(echo "$folder/year planner"/OutlookVelkor-*)

"${run[@]}" --wait
rm -rf "$prefix"
cd "$unpacked"
check_pages
check_programs
[[ $mode == --short ]] || check_scripts
cd "$root"
check_setup
[[ $mode == --short ]] || check_setup /AllUsers
echo "The package works."
