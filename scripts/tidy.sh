#!/usr/bin/env bash
# Runs clang-tidy over the native build: scripts/tidy.sh [FILE...], every source without arguments.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/packages.sh desktop test tidy
# The build with the most programs in it.
cmake --preset bench >/dev/null
files=("$@")
if ((${#files[@]} == 0)); then
  mapfile -t files < <(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' \
    build/bench/compile_commands.json | grep -F "$PWD/" | grep -vF "$PWD/build/" | sort -u)
fi
printf '%s\0' "${files[@]}" |
  xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 -p build/bench --quiet --warnings-as-errors='*' \
    --extra-arg=-Wno-unknown-warning-option
