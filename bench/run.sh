#!/usr/bin/env bash
# Builds the measuring program and shows every figure with what it may be at most.
#   bench/run.sh [--benchmark_filter=REGEX]
# The exit code is 1 when a figure is missed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Apart from the rest, as a password may be asked for.
scripts/packages.sh desktop test >&2
mkdir -p build
log=build/bench.log
{
  cmake --preset bench
  cmake --build --preset bench --target yearplan-bench
} >"$log" 2>&1 </dev/null || { cat "$log" >&2; exit 1; }
exec build/bench/bin/yearplan-bench "$@"
