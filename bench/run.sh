#!/usr/bin/env bash
# Builds the measuring program and shows every figure with what it may be at most.
#   bench/run.sh [--benchmark_filter=REGEX]
# Those of drawing by GDI too, where the cross compiler and Wine are and no filter is given.
# The exit code is 1 when a figure is missed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Apart from the rest, as a password may be asked for.
scripts/packages.sh desktop test >&2
mkdir -p build
log=build/bench.log

# build PRESET TARGET
build() {
  { cmake --preset "$1" && cmake --build --preset "$1" --target "$2"; } >"$log" 2>&1 </dev/null ||
    { cat "$log" >&2; exit 1; }
}

code=0
build bench yearplan-bench
build/bench/bin/yearplan-bench "$@" || code=1
if (($# == 0)) && command -v wine >/dev/null && command -v x86_64-w64-mingw32-g++-posix >/dev/null; then
  build bench-mingw gdi-bench
  scripts/wine-run.sh build/bench-mingw/bin/gdi-bench.exe || code=1
  scripts/wine-run.sh --stop
fi
exit "$code"
