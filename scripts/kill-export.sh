#!/usr/bin/env bash
# Kills `yearplan export` at random moments and counts the files that are lost or cut.
#   scripts/kill-export.sh [COUNT]   1000 kills unless told otherwise
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=scripts/count.sh
source scripts/count.sh "$@"

cmake --preset linux >/dev/null
cmake --build --preset linux --target yearplan >/dev/null
program=$PWD/build/linux/bin/yearplan
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_CACHE_HOME=$folder/cache XDG_CONFIG_HOME=$folder/config QT_QPA_PLATFORM=offscreen

# Two calendars of some size, so that old and new file differ and writing takes its time.
for name in a b; do
  {
    printf 'BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//kill-export\r\n'
    for i in {1..2000}; do
      printf 'BEGIN:VEVENT\r\nUID:%s%d\r\nDTSTART;VALUE=DATE:2026%02d%02d\r\nSUMMARY:%s %d\r\n' \
        "$name" "$i" $((i % 12 + 1)) $((i % 28 + 1)) "$name" "$i"
      printf 'DESCRIPTION:%0400d\r\nEND:VEVENT\r\n' "$i"
    done
    printf 'END:VCALENDAR\r\n'
  } >"$folder/$name.ics"
  "$program" export "$folder/$name.ics" --from 2026 -o "$folder/$name.xml" >/dev/null
done

# How long an export takes, in microseconds; kills fall into a little more than that.
start=${EPOCHREALTIME/[.,]/}
"$program" export "$folder/a.ics" --from 2026 -o "$folder/out.xml" >/dev/null
whole=$((${EPOCHREALTIME/[.,]/} - start))

runs=0 killed=0 lost=0 cut=0 old=a
while ((killed < count)); do
  runs=$((runs + 1))
  new=$([[ $old == a ]] && echo b || echo a)
  "$program" export "$folder/$new.ics" --from 2026 -o "$folder/out.xml" >/dev/null 2>&1 &
  victim=$!
  pause=$((RANDOM * whole * 11 / 10 / 32768))
  sleep "$((pause / 1000000)).$(printf %06d $((pause % 1000000)))"
  kill -KILL "$victim" 2>/dev/null && killed=$((killed + 1))
  wait "$victim" 2>/dev/null || true
  if [[ ! -f $folder/out.xml ]]; then
    lost=$((lost + 1))
    cp "$folder/$old.xml" "$folder/out.xml"
  elif cmp -s "$folder/out.xml" "$folder/$new.xml"; then
    old=$new
  elif ! cmp -s "$folder/out.xml" "$folder/$old.xml"; then
    cut=$((cut + 1))
    cp "$folder/$old.xml" "$folder/out.xml"
  fi
done
echo "$killed of $runs exports killed: $lost files lost, $cut cut"
((lost == 0 && cut == 0))
