#!/usr/bin/env bash
# Builds the Windows product and packs it: ./package.sh [FILE.zip]
# The package holds the control, the cache utility, the try-out form with its script, the scripts
# that register and unregister them, and the pages. Default: build/OutlookVelkor-VERSION-win64.zip
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
export LC_ALL=C.UTF-8

version=$(sed -n 's/^project(OutlookVelkor VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=OutlookVelkor-$version-win64
if (($# > 1)) || [[ ${1:-} == -* ]]; then
  sed -n '2,4p' "${BASH_SOURCE[0]}" >&2
  exit 2
fi
target=$(realpath -m "${1:-build/$name.zip}")
mkdir -p "$(dirname "$target")"

scripts/packages.sh windows
CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL
mkdir -p build
echo "Building"
if ! { cmake --preset mingw && cmake --build --preset mingw --target OutlookVelkor vkrRefresh TryOutForm; } \
  >build/package.log 2>&1 </dev/null; then
  cat build/package.log >&2
  exit 1
fi

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
folder=$stage/$name
mkdir -p "$folder/docs/pictures"
for program in OutlookVelkor.ocx vkrRefresh.exe TryOutForm.exe; do
  cp "build/mingw/bin/$program" "$folder"
  x86_64-w64-mingw32-strip "$folder/$program"
done
cp hosts/windows/TryOut/TryOut.vbs LICENSE "$folder"
# Windows' own tools expect its line ends.
for script in Register Unregister; do
  sed 's/$/\r/' "hosts/windows/package/$script.cmd" >"$folder/$script.cmd"
done
cp docs/help.html docs/placing.html docs/interfaces.md "$folder/docs"

# One step from no file to the whole file.
(cd "$stage" && cmake -E tar cf package.zip --format=zip "$name")
mv "$stage/package.zip" "$target.part"
mv "$target.part" "$target"
echo "$target"
