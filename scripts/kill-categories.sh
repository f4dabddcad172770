#!/usr/bin/env bash
# Kills two `yearplan categories` at random moments of their work on one calendar and looks for what
# is lost.
#   scripts/kill-categories.sh [COUNT]   1000 kills unless told otherwise; 8 at least
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=scripts/count.sh
source scripts/count.sh "$@"

cmake --preset linux >/dev/null
cmake --build --preset linux --target hosts_tests >/dev/null
VELKOR_KILLS=$count QT_QPA_PLATFORM=offscreen timeout $((60 + 2 * count)) \
  build/linux/bin/hosts_tests --gtest_brief=1 --gtest_filter='CategoriesCommand.OfTwoThatAreKilled*'
