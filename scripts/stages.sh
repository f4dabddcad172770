# scripts/stages.sh: timed stages and the counts of a test run, for scripts that source it.
# shellcheck shell=bash

passed=0
failed=0
skipped=0

# run_stage TITLE COMMAND...: runs a stage, its output in a log that is shown when it fails.
run_stage() {
  local title=$1 began=$SECONDS code=0 log
  shift
  mkdir -p build/logs
  log=build/logs/${title//[^A-Za-z0-9]/-}.log
  "$@" >"$log" 2>&1 </dev/null || code=$?
  if ((code)); then
    echo "---- $title failed (exit code $code); the end of $log:"
    tail -n 120 "$log"
    echo "----"
  fi
  printf '%5d s  %s\n' $((SECONDS - began)) "$title"
  return "$code"
}

# run_packages GROUP...: installs what is missing, with the terminal, as a password may be asked for.
run_packages() {
  local began=$SECONDS code=0
  scripts/packages.sh "$@" || code=$?
  printf '%5d s  packages\n' $((SECONDS - began))
  return "$code"
}

# run_check TITLE COMMAND...: a stage that counts as one test.
run_check() {
  if run_stage "$@"; then passed=$((passed + 1)); else failed=$((failed + 1)); fi
}

# run_tests TITLE PRESET [JOBS]: everything that ctest knows in a preset, counted by single cases.
run_tests() {
  local folder=build/$2 p f s
  rm -rf "$folder/test-results" "$folder/ctest.xml"
  run_stage "$1" ctest --preset "$2" --no-tests=error -j "${3:-$(nproc)}" --output-junit ctest.xml || true
  read -r p f s < <(count_cases "$folder")
  echo "         $p passed, $f failed, $s skipped"
  passed=$((passed + p))
  failed=$((failed + f))
  skipped=$((skipped + s))
}

# count_cases FOLDER: passed, failed and skipped cases of the last ctest run in a build folder.
# A program that left no result, as after a crash, is one failure; so is a run without results.
count_cases() {
  local p=0 f=0 s=0 name status result cases
  while read -r name status; do
    result=$1/test-results/$name.json
    cases=(0 0 0)
    [[ ! -s $result ]] || read -ra cases < <(count_results "$result")
    if [[ $status == run ]]; then
      # A plain script has no cases of its own.
      [[ -s $result ]] || cases=(1 0 0)
    elif [[ $status == disabled ]]; then
      cases=(0 0 1)
    elif ((cases[1] == 0)); then
      cases[1]=1
    fi
    p=$((p + cases[0])) f=$((f + cases[1])) s=$((s + cases[2]))
  done < <(sed -n 's/.*<testcase name="\([^"]*\)".* status="\([^"]*\)".*/\1 \2/p' \
    "$1/ctest.xml" 2>/dev/null)
  ((p + f + s)) || f=1
  echo "$p $f $s"
}

# count_results FILE: the same for one GoogleTest program's JSON, which holds one key on each line.
# The first three totals are those of the whole program; a disabled case counts as skipped.
count_results() {
  awk -F'[:,]' '
    $1 ~ /^ *"tests"$/ && !("tests" in total) { total["tests"] = $2 }
    $1 ~ /^ *"failures"$/ && !("failures" in total) { total["failures"] = $2 }
    $1 ~ /^ *"disabled"$/ && !("disabled" in total) { total["disabled"] = $2 }
    /^ *"result": "SKIPPED"/ { skipped++ }
    END {
      skipped += total["disabled"]
      printf "%d %d %d\n", total["tests"] - total["failures"] - skipped, total["failures"], skipped
    }' "$1"
}
