#!/usr/bin/env bash
# Coverage-guided fuzzing of the readers: clang's libFuzzer with address and undefined-behaviour
# checks. Every tests/fuzz/Fuzz<Name>.cpp is a target; its seeds lie in tests/fuzz/corpus/<name>.
#   scripts/fuzz.sh [SECONDS] [TARGET...]   fuzzes each target for so long (600 without a number)
#   scripts/fuzz.sh --build                 only builds
#   scripts/fuzz.sh --list                  names the targets
# The exit code is not zero on a finding; the input that shows it is named and kept.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

targets() {
  find tests/fuzz -maxdepth 1 -name 'Fuzz*.cpp' -printf '%f\n' | sed 's/\.cpp$//' | sort
}

packages() {
  scripts/packages.sh desktop fuzz >&2
}

build() {
  cmake --preset fuzz
  cmake --build --preset fuzz --target fuzzers
}

# Options for one target beyond those that all have.
options_of() {
  case $1 in
    FuzzIcs) echo -max_len=4096 -timeout=10 -rss_limit_mb=2048 ;;
    *) echo -max_len=8192 -timeout=10 -rss_limit_mb=2048 ;;
  esac
}

# fuzz SECONDS TARGET
fuzz() {
  local name=$2 folder=build/fuzz-runs/$2 seeds log code=0
  seeds=tests/fuzz/corpus/$(tr '[:upper:]' '[:lower:]' <<<"${name#Fuzz}")
  log=$folder/run.log
  mkdir -p "$folder/corpus" "$folder/findings"
  local options
  read -ra options < <(options_of "$name")
  # What is found to be new goes to the first folder; the seeds are only read.
  TZ=UTC build/fuzz/bin/"$name" "${options[@]}" -max_total_time="$1" -print_final_stats=1 \
    -artifact_prefix="$folder/findings/" "$folder/corpus" "$seeds" >"$log" 2>&1 </dev/null || code=$?
  echo "$name: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") inputs in $1 s," \
    "$(sed -n 's/^#.*DONE *cov: \([0-9]*\).*/\1/p' "$log") edges covered"
  if ((code)); then
    echo "$name found something (exit code $code); the end of $log:" >&2
    tail -n 60 "$log" >&2
    echo "inputs that show it:" >&2
    find "$folder/findings" -type f >&2
  fi
  return "$code"
}

case ${1:-} in
  --build) packages; build; exit ;;
  --list) targets; exit ;;
esac

seconds=600
if [[ ${1:-} =~ ^[0-9]+$ ]]; then
  seconds=$1
  shift
fi
mapfile -t wanted < <(if (($#)); then printf '%s\n' "$@"; else targets; fi)
# Apart from the rest, as a password may be asked for.
packages
log=build/fuzz-build.log
mkdir -p build
build >"$log" 2>&1 </dev/null || { cat "$log" >&2; exit 1; }
findings=0
for name in "${wanted[@]}"; do
  fuzz "$seconds" "$name" || findings=$((findings + 1))
done
((findings == 0))
