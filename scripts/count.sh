# scripts/count.sh: takes the one argument COUNT of a script that sources it from the tree's root with
# its own arguments; 1000 without one. Another text ends the script with its opening comment.
# shellcheck shell=bash

count=${1:-1000}
if [[ ! $count =~ ^[1-9][0-9]{0,5}$ ]]; then
  sed -n '2,${/^#/!q;p}' "scripts/$(basename "$0")" >&2
  exit 2
fi
