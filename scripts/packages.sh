#!/usr/bin/env bash
# Makes sure that building can begin: the folder build can be written, the Debian packages that are
# missing are installed (as root or with sudo), and the tools are new enough.
#   scripts/packages.sh GROUP...
# Groups: desktop (the desktop program), test (its tests and the checks), windows (the cross build
# and Wine; nothing where the processor is not x86-64), windows32 (the cross build for 32 bits and
# what makes the root of its Wine), package (the installer, the pages and the signing of the Windows
# package), containers (the form of Lazarus), servers (calendar servers and another client of
# theirs), rules (the comparison of recurrence rules), fuzz, tidy.
set -euo pipefail
export LC_ALL=C.UTF-8

cd "$(dirname "${BASH_SOURCE[0]}")/.."

packages_of() {
  case $1 in
    desktop)
      echo cmake ninja-build g++ qt6-base-dev qt6-svg-dev qtkeychain-qt6-dev libical-dev zlib1g-dev nlohmann-json3-dev \
        fonts-liberation fonts-dejavu-core fonts-droid-fallback fonts-symbola tzdata
      # The older names of zones (US/Eastern), where tzdata leaves them out.
      ! apt-cache show tzdata-legacy >/dev/null 2>&1 || echo tzdata-legacy ;;
    test)
      echo googletest libgtest-dev libgmock-dev libbenchmark-dev locales poppler-utils \
        clang-format-14 openssl radicale ;;
    windows)
      # Only 64-bit Wine: installing the 32-bit one can remove this one.
      [[ $(uname -m) != x86_64 ]] ||
        echo wine wine64 libwine-dev g++-mingw-w64-x86-64-posix mingw-w64-tools ;;
    windows32) echo g++-mingw-w64-i686-posix mingw-w64-tools libwine-dev mmdebstrap uidmap ;;
    package) echo nsis cmark-gfm osslsigncode openssl ;;
    containers) echo fp-compiler fpc-source lazarus-src xvfb imagemagick ;;
    servers) echo radicale xandikos cyrus-caldav vdirsyncer ;;
    rules) echo python3-dateutil ;;
    fuzz) echo clang-14 libclang-rt-14-dev ;;
    tidy) echo clang-tidy-14 ;;
    *) echo "packages.sh: no such group: $1" >&2; return 2 ;;
  esac
}

# What root built stays root's.
foreign=$(find build -maxdepth 2 ! -type l ! -writable -print -quit 2>/dev/null || true)
if [[ -n $foreign ]]; then
  echo "packages.sh: ${foreign} cannot be written by $(id -un), as after a build with sudo:" \
    "go on with sudo, or remove the folder build first (sudo rm -r build)" >&2
  exit 1
fi

# find_missing GROUP...: fills `missing`.
find_missing() {
  local group list package status some wanted=()
  for group in "$@"; do
    list=$(packages_of "$group" | tr '\n' ' ')
    read -ra some <<<"$list"
    wanted+=("${some[@]}")
  done
  missing=()
  if command -v dpkg-query >/dev/null && command -v apt-get >/dev/null; then
    for package in "${wanted[@]}"; do
      status=$(dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null || true)
      grep -qx installed <<<"$status" || missing+=("$package")
    done
  else
    echo "packages.sh: this system has no apt-get; what Debian 12 calls ${wanted[*]} must be there." >&2
  fi
}

find_missing "$@"
if ((${#missing[@]})); then
  as_root=()
  if ((EUID != 0)); then
    as_root=(sudo)
    [[ -t 0 ]] || as_root+=(-n)
    if ! "${as_root[@]}" true 2>/dev/null; then
      echo "packages.sh: run this as root or with sudo, or have these installed first:" >&2
      echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
      exit 1
    fi
  fi
  mkdir -p build
  log=build/packages.log
  apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
  # The update may fail for a source that does not matter; the installation tells.
  "${apt[@]}" update >"$log" 2>&1 </dev/null || true
  # Only an updated list tells which packages there are besides.
  find_missing "$@"
  echo "Installing ${missing[*]}"
  if ! "${apt[@]}" install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1 </dev/null; then
    echo "packages.sh: the installation failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
  fi
fi

# at_least NAME WANTED FOUND
at_least() {
  if [[ -z $3 || $(printf '%s\n%s\n' "$2" "$3" | sort -V | head -n 1) != "$2" ]]; then
    echo "packages.sh: $1 $2 or later is needed, found: ${3:-none}" >&2
    exit 1
  fi
}
at_least g++ 12 "$(g++ -dumpfullversion 2>/dev/null || true)"
at_least cmake 3.25 "$(cmake --version 2>/dev/null | sed -n 's/^cmake version //p')"
at_least ninja 1.10 "$(ninja --version 2>/dev/null || true)"
if [[ " $* " == *" windows "* && $(uname -m) == x86_64 ]]; then
  at_least x86_64-w64-mingw32-g++-posix 12 \
    "$(x86_64-w64-mingw32-g++-posix -dumpversion 2>/dev/null | sed 's/-.*//' || true)"
fi
