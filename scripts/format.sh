#!/usr/bin/env bash
# Fails where a source is not laid out as .clang-format says; with --fix, lays it out so.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mode=(--dry-run -Werror)
[[ ${1:-} != --fix ]] || mode=(-i)
find . \( -path ./build -o -path ./.git \) -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0 |
  sort -z | xargs -0 -r clang-format-14 --style=file "${mode[@]}"
