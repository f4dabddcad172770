#!/usr/bin/env bash
# Shares calendars between people on real servers, each started for this alone: COUNT edits by three of
# them (1000 unless told otherwise), and COUNT kills, of which none may cost an edit.
#   [COUNT=N] scripts/servers.sh [--short] [SERVER...]   radicale, xandikos and cyrus unless told
#                                                        otherwise; --short makes the long runs short
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

# shellcheck source=scripts/stages.sh
source scripts/stages.sh

# shellcheck source=scripts/count.sh
source scripts/count.sh "${COUNT:-}"
if [[ ${1:-} == --short ]]; then
  count=1
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
  VELKOR_SERVER=$server VELKOR_EDITS=$count VELKOR_KILLS=$count \
    run_check "$server" build/linux/bin/network_tests --gtest_filter='CalendarServer*'
  grep -hE '^[0-9]+ (edits|kills)' "build/logs/$server.log" || true
done
echo "$passed passed, $failed failed"
((failed == 0 && passed > 0))
