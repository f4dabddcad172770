#!/usr/bin/env bash
# Makes Windows controls, two at a time, lets them go, and looks for what the process still holds.
#   scripts/many-controls.sh [COUNT]   1000 controls unless told otherwise
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

count=${1:-1000}
if [[ ! $count =~ ^[1-9][0-9]{0,5}$ ]]; then
  sed -n '2,3p' "${BASH_SOURCE[0]}" >&2
  exit 2
fi

cmake --preset mingw >/dev/null
cmake --build --preset mingw --target hosts_tests >/dev/null
export VELKOR_CONTROLS=$count VELKOR_WINE_PREFIX=many-controls VELKOR_WINE_TIMEOUT=$((60 + count))
scripts/wine-run.sh build/mingw/bin/hosts_tests.exe --gtest_filter='ControlLoads.Many*'
