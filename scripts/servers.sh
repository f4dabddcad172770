#!/usr/bin/env bash
# Shares calendars between people on real servers, each started for this alone.
#   scripts/servers.sh [--short] [SERVER...]   radicale, xandikos and cyrus unless told otherwise;
#                                              --short leaves the long runs out
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

# shellcheck source=scripts/stages.sh
source scripts/stages.sh

filter='CalendarServer*'
if [[ ${1:-} == --short ]]; then
  filter='CalendarServer.*'
  shift
fi
servers=("$@")
((${#servers[@]})) || servers=(radicale xandikos cyrus)
for server in "${servers[@]}"; do
  if [[ ! -x scripts/servers/$server.sh ]]; then
    sed -n '2,${/^#/!q;p}' "${BASH_SOURCE[0]}" >&2
    exit 2
  fi
done

run_packages desktop test servers || exit 1
run_stage "build network_tests" cmake --build --preset linux --target network_tests || exit 1
for server in "${servers[@]}"; do
  VELKOR_SERVER=$server run_check "$server" build/linux/bin/network_tests --gtest_filter="$filter"
done
echo "$passed passed, $failed failed"
((failed == 0 && passed > 0))
