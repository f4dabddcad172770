#!/usr/bin/env bash
# Builds the Windows face for 32 bits and runs all its tests under a Wine of both word sizes. Such a
# Wine needs packages of another architecture, so it lives in a bare system of its own, made once in
# build/windows32/root from the machine's own package sources (1.7 GB); the machine itself only gets
# what scripts/packages.sh installs. The last line is the counts; the exit code is not zero when
# anything failed or nothing ran.
#   scripts/windows32.sh                    builds and tests
#   scripts/windows32.sh --run COMMAND...   runs a command in that root, which it makes when missing,
#                                           and answers with its exit code
#   scripts/windows32.sh --remove           removes the root and its Wine prefixes
# A command sees the tree and /tmp where they are outside, begins in the current folder and keeps the
# environment. scripts/wine-run.sh has prefixes of its own there; each runs programs of both word
# sizes: system32 holds the libraries of 64 bits, syswow64 those of 32, and the 32-bit programs of
# the system are started by that folder's name:
#   scripts/windows32.sh --run scripts/wine-run.sh build/mingw32/bin/windows_tests.exe
#   scripts/windows32.sh --run scripts/wine-run.sh 'C:\windows\syswow64\regsvr32.exe' /s build/mingw32/bin/OutlookVelkor.ocx
# Windows on a display, as of Xvfb, outside: VELKOR_WINE_DISPLAY (see scripts/wine-run.sh).
set -euo pipefail

tree=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$tree/build/windows32
root=$folder/root
# Fonts as the desktop's, and the time zones of the tests.
packages=wine,wine64,wine32:i386,tzdata,fonts-liberation,fonts-dejavu-core,fonts-droid-fallback,fonts-symbola

# Mounts need a namespace of their own and, unless root asks, a user's too.
separate=(unshare --mount)
((EUID == 0)) || separate=(unshare --user --map-root-user --map-auto --mount)

# sources PATTERN: the machine's package sources of its own distribution whose releases match.
sources() {
  apt-get indextargets --format '$(ORIGIN) $(RELEASE) deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Created-By: Packages' |
    awk -v origin="$(. /etc/os-release && echo "$ID")" -v pattern="$1" \
      'tolower($1) == origin && $2 ~ pattern { $1 = $2 = ""; print }' | sort -u
}

# bootstrap PATTERN: the root from those sources, fetched in the machine's own way.
bootstrap() {
  local option options=()
  apt-config dump | grep -E '^Acquire::(https?|ftp|Check|Retries)' >"$folder/apt.conf" || true
  for option in /usr/share/keyrings /etc/apt/keyrings /etc/apt/trusted.gpg.d; do
    [[ ! -d $option ]] || options+=(--keyring="$option")
  done
  sources "$1" >"$folder/sources.list"
  "${separate[@]}" rm -rf "$root"
  mmdebstrap --format=directory --variant=essential --architectures=amd64,i386 \
    --include="$packages" --aptopt="$folder/apt.conf" \
    --aptopt='APT::Install-Recommends "false"' "${options[@]}" \
    "" "$root" "$folder/sources.list"
}

make_root() {
  "$tree/scripts/packages.sh" windows32 || return
  echo "windows32.sh: making $root"
  # A mirror in the midst of its updates serves the release itself all the same.
  bootstrap . || bootstrap '^[^-]*$' || return
  echo "$packages" >"$folder/made-with"
}

ensure_root() {
  mkdir -p "$folder"
  exec 8>"$folder/lock"
  flock 8
  if [[ ! -f $folder/made-with || $(<"$folder/made-with") != "$packages" ]]; then
    rm -f "$folder/made-with"
    make_root >"$folder/root.log" 2>&1 </dev/null 8>&- ||
      { echo "windows32.sh: no root could be made; the end of $folder/root.log:" >&2
        tail -n 30 "$folder/root.log" >&2; exit 1; }
  fi
  exec 8>&-
}

# Runs in the namespace: $1 the root, $2 the tree, then the command.
# shellcheck disable=SC2016
enter='
  for each in /proc /dev /tmp; do mount --rbind "$each" "$1$each"; done
  mkdir -p "$1$2"
  mount --bind "$2" "$1$2"
  root=$1
  shift 2
  exec chroot "$root" /usr/bin/env -C "$PWD" "$@"'

# run_inside COMMAND...
run_inside() {
  VELKOR_WINE_FOLDER=$folder/wine "${separate[@]}" /bin/bash -euc "$enter" windows32 "$root" "$tree" "$@"
}

build() {
  cmake --preset mingw32 && cmake --build --preset mingw32 -j "$(nproc)"
}

build_and_test() {
  export LC_ALL=C.UTF-8
  cd "$tree"
  # shellcheck source=scripts/stages.sh
  source scripts/stages.sh
  run_packages test windows windows32 || return
  run_stage "root of both word sizes" ensure_root || return
  run_stage "build mingw32" build || return
  run_stage "wine prefix 32" run_inside scripts/wine-run.sh --fresh || return
  run_tests "tests under 32-bit Wine" mingw32 4
  run_inside scripts/wine-run.sh --stop
  echo "$passed passed, $failed failed, $skipped skipped"
  ((failed == 0 && passed > 0))
}

[[ $(uname -m) == x86_64 ]] || { echo "windows32.sh: Wine needs an x86-64 processor" >&2; exit 1; }
case ${1:-} in
  "") build_and_test || exit 1 ;;
  --run)
    (($# > 1)) || { echo "windows32.sh: --run needs a command" >&2; exit 2; }
    ensure_root
    run_inside "${@:2}" ;;
  --remove)
    [[ ! -d $root ]] || run_inside scripts/wine-run.sh --stop
    "${separate[@]}" rm -rf "$folder" ;;
  *) sed -n '2,19p' "${BASH_SOURCE[0]}" >&2; exit 2 ;;
esac
