#!/usr/bin/env bash
# Kills a program at random writes while it saves into the copy of a server's calendar, sends and
# fetches, and looks for edits that are lost and objects that are broken.
#   scripts/kill-mirror.sh [COUNT]   1000 kills unless told otherwise; 8 at least
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=scripts/count.sh
source scripts/count.sh "$@"

cmake --preset linux >/dev/null
cmake --build --preset linux --target calendar_tests >/dev/null
VELKOR_KILLS=$count QT_QPA_PLATFORM=offscreen timeout $((60 + 5 * count)) \
  build/linux/bin/calendar_tests --gtest_brief=1 --gtest_filter='MirrorKills.*'
