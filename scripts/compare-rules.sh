#!/usr/bin/env bash
# Makes random recurrence rules and compares the starts that the program finds for each, over three
# years, with those of python3-dateutil; shows every rule that differs. The exit code is 1 when one
# does.
#   scripts/compare-rules.sh [COUNT [SEED]]     COUNT is 100000 unless given
#   scripts/compare-rules.sh --store COUNT      writes tests/data/rules.txt anew
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Apart from the rest, as a password may be asked for.
scripts/packages.sh desktop test rules >&2
log=build/compare-rules.log
{ cmake --preset linux && cmake --build --preset linux --target expand-rules; } >"$log" 2>&1 \
  </dev/null || { cat "$log" >&2; exit 1; }
/usr/bin/python3 scripts/compare-rules.py build/linux/bin/expand-rules tests/data/rules.txt "$@"
