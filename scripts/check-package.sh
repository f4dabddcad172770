#!/usr/bin/env bash
# Makes the Windows package and tries it under Wine as a user would: unpacked in a folder with a
# blank, registered by its script, its sample script run, unregistered again.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
./package.sh "$folder/package.zip"
mkdir "$folder/year planner"
(cd "$folder/year planner" && cmake -E tar xf ../package.zip)
root=$PWD
cd "$folder/year planner"/OutlookVelkor-*

# run WANTED COMMAND...: fails unless the output holds a text; only the machine's registration is
# seen by programs under Wine.
run() {
  local wanted=$1 output
  shift
  output=$("$root/scripts/wine-run.sh" "$@" 2>&1) || { echo "$* failed: $output" >&2; exit 1; }
  [[ $output == *"$wanted"* ]] || { echo "$*: no \"$wanted\" in: $output" >&2; exit 1; }
}
run "is registered" cmd /c Register.cmd
run "not registered any more" cmd /c Unregister.cmd
run "is registered" cmd /c Register.cmd machine
run "The year is drawn in" TryOutForm.exe TryOut.vbs
run "not registered any more" cmd /c Unregister.cmd machine
echo "The package works."
