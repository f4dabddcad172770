#!/usr/bin/env bash
# Installs what is missing, builds the planner and starts it: ./run.sh [CALENDAR]
# CALENDAR is an iCalendar file; without one a sample year is shown.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
calendar=
if (($#)); then
  calendar=$1
  [[ $calendar == /* ]] || calendar=$PWD/$calendar
  if [[ ! -r $calendar || -d $calendar ]]; then
    echo "run.sh: $1 cannot be read" >&2
    exit 1
  fi
fi

# The steps tell only when they take time; their whole output is shown when one fails.
quietly() {
  local log=$root/build/run.log
  if ! "$@" >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    exit 1
  fi
}

cd "$root"
scripts/packages.sh desktop
mkdir -p build
echo "Building"
CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL
quietly cmake --preset linux
quietly cmake --build --preset linux --target yearplan
# The sample is opened as a copy, since the window writes into its calendar.
if [[ -z $calendar ]]; then
  calendar=$root/build/team.ics
  [[ -e $calendar ]] || cp samples/team.ics "$calendar"
fi
# Without a display the program draws a picture, which goes into the build folder.
cd build
exec linux/bin/yearplan "$calendar"
