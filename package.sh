#!/usr/bin/env bash
# Builds the Windows product for both word sizes and packs it, twice: ./package.sh [FILE.zip]
# FILE-Setup.exe installs it, for one user or for everybody; FILE.zip holds the same files with
# scripts that register them where they lie. Default: build/OutlookVelkor-VERSION-windows.zip
# VELKOR_WORD_SIZES="64" leaves the 32-bit part out. VELKOR_SETUP_STUB=amd64-unicode makes an
# installer that runs where no 32-bit program does, as under Wine of 64 bits alone; the usual one
# (x86-unicode) runs on every Windows. With a certificate all is signed (see scripts/sign.sh).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
export LC_ALL=C.UTF-8

read -ra sizes <<<"${VELKOR_WORD_SIZES:-64 32}"
stub=${VELKOR_SETUP_STUB:-x86-unicode}
version=$(sed -n 's/^project(OutlookVelkor VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=OutlookVelkor-$version-windows
if (($# > 1)) || [[ ${1:-} == -* || ${1:-.zip} != *.zip ]]; then
  sed -n '2,7p' "${BASH_SOURCE[0]}" >&2
  exit 2
fi
target=$(realpath -m "${1:-build/$name.zip}")
mkdir -p "$(dirname "$target")" build

# By word size: what the compiler's names begin with, the build, the group of packages.
declare -A machine=([64]=x86_64 [32]=i686) preset=([64]=mingw [32]=mingw32)
declare -A group=([64]=windows [32]=windows32)
programs=(OutlookVelkor vkrRefresh TryOutForm)

groups=(package)
for size in "${sizes[@]}"; do groups+=("${group[$size]}"); done
scripts/packages.sh "${groups[@]}"
CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL
for size in "${sizes[@]}"; do
  echo "Building for $size bits"
  if ! { cmake --preset "${preset[$size]}" &&
    cmake --build --preset "${preset[$size]}" --target "${programs[@]}" SetupHelper; } \
    >build/package.log 2>&1 </dev/null; then
    cat build/package.log >&2
    exit 1
  fi
done

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
folder=$stage/$name
tools=$stage/tools
mkdir -p "$folder/docs" "$tools"

# with_crlf FILE TARGET: Windows' own tools expect its line ends.
with_crlf() { sed 's/$/\r/' "$1" >"$2"; }

# as_page FILE.md TITLE: a page of the package from one of Markdown, its links pointing to pages.
as_page() {
  cat <<HTML
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>$2</title>
<style>
$(sed -n '/<style>/,/<\/style>/{/style>/d;p}' docs/placing.html)
</style>
</head>
<body>
HTML
  cmark-gfm -e table --unsafe "$1" | sed -E 's/(href="[a-z-]+)\.md"/\1.html"/g'
  echo '</body></html>'
}

# windows_help: the user's page with what it says of the control instead of the desktop program.
windows_help() {
  sed -e '/^<!-- One page/,/-->$/d' -e '/<!--desktop-->/,/<!--\/desktop-->/d' -e '/^<!--windows$/d' -e '/^windows-->$/d' docs/help.html
}

for size in "${sizes[@]}"; do
  bin=build/${preset[$size]}/bin
  mkdir "$folder/$size-bit"
  cp "$bin/OutlookVelkor.ocx" "$bin/vkrRefresh.exe" "$bin/TryOutForm.exe" "$folder/$size-bit"
  cp "$bin/SetupHelper.exe" "$tools/SetupHelper$size.exe"
  "${machine[$size]}-w64-mingw32-strip" "$folder/$size-bit"/* "$tools/SetupHelper$size.exe"
  scripts/sign.sh "$folder/$size-bit"/* "$tools/SetupHelper$size.exe"
done
with_crlf LICENSE "$folder/LICENSE.txt"
with_crlf hosts/windows/TryOut/TryOut.vbs "$folder/TryOut.vbs"
cp hosts/windows/package/README.html "$folder"
windows_help >"$folder/docs/help.html"
cp docs/placing.html "$folder/docs"
as_page docs/interfaces.md "OutlookVelkor: interfaces" >"$folder/docs/interfaces.html"
as_page docs/windows-untested.md "OutlookVelkor: what to try on Windows" \
  >"$folder/docs/windows-untested.html"

# What is installed, as the uninstaller reads it.
{ (cd "$folder" && find . -type f -printf '%P\n'); printf '%s\n' Files.lst Uninstall.exe; } |
  sort | sed -e 's,/,\\,g' -e 's/$/\r/' >"$stage/Files.lst"
options=("-DVERSION=$version" "-DSTAGE=$folder" "-DLIST=$stage/Files.lst" "-DSTUB=$stub"
  "-DOUT=$stage/Setup.exe" "-DICON=hosts/windows/OutlookVelkor/YearPlan.ico"
  "-DCOPYRIGHT=$(grep -m 1 ^Copyright LICENSE)" "-DPUBLISHER=The OutlookVelkor authors")
for size in "${sizes[@]}"; do options+=("-DHOLDERS$size=$tools/SetupHelper$size.exe"); done
[[ -z ${VELKOR_SIGN_CERTIFICATE:-}${VELKOR_SIGN_PKCS12:-} ]] ||
  options+=("-DSIGN=$PWD/scripts/sign.sh")
if ! makensis -V2 -NOCD "${options[@]}" hosts/windows/package/Setup.nsi >build/package.log 2>&1; then
  cat build/package.log >&2
  exit 1
fi
scripts/sign.sh "$stage/Setup.exe"

for script in Register Unregister WordSizes; do
  with_crlf "hosts/windows/package/$script.cmd" "$folder/$script.cmd"
done
(cd "$stage" && cmake -E tar cf package.zip --format=zip "$name")

# One step from no file to the whole file.
deliver() {
  mv "$1" "$2.part"
  mv "$2.part" "$2"
  echo "$2"
}
deliver "$stage/package.zip" "$target"
deliver "$stage/Setup.exe" "${target%.zip}-Setup.exe"
