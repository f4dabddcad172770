#!/usr/bin/env bash
# Kills the worker at random moments of a refresh and counts the broken cache files.
#   scripts/kill-refresh.sh [COUNT]   1000 kills unless told otherwise; 25 at least
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=scripts/count.sh
source scripts/count.sh "$@"

cmake --preset linux >/dev/null
cmake --build --preset linux --target refresh_tests >/dev/null
VELKOR_KILLS=$count QT_QPA_PLATFORM=offscreen timeout $((60 + count)) \
  build/linux/bin/refresh_tests --gtest_brief=1 --gtest_filter='WorkerDies.AKillAtAnyMoment*'
