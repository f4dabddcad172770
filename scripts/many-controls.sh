#!/usr/bin/env bash
# Makes Windows controls, two at a time, lets them go, and looks for what the process still holds.
#   scripts/many-controls.sh [COUNT]   1000 controls unless told otherwise
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=scripts/count.sh
source scripts/count.sh "$@"

cmake --preset mingw >/dev/null
cmake --build --preset mingw --target hosts_tests >/dev/null
export VELKOR_CONTROLS=$count VELKOR_WINE_PREFIX=many-controls VELKOR_WINE_TIMEOUT=$((60 + count))
scripts/wine-run.sh build/mingw/bin/hosts_tests.exe --gtest_filter='ControlLoads.Many*'
