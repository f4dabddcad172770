#!/usr/bin/env bash
# Coverage-guided fuzzing of the readers: clang's libFuzzer with address and undefined-behaviour
# checks. Every tests/fuzz/Fuzz<Name>.cpp is a target; its seeds lie in tests/fuzz/corpus/<name>.
#   scripts/fuzz.sh [SECONDS] [TARGET...]   fuzzes each target for so long (600 without a number)
#   scripts/fuzz.sh --check RUNS [TARGET...]  runs the seeds, then so many inputs that are made of
#                                             them in the same way each time
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

# fuzz FOLDER TARGET OPTION...: a run, its new inputs, findings and log below FOLDER.
fuzz() {
  local name=$2 folder=$1/$2 seeds log code=0 began=$SECONDS
  seeds=tests/fuzz/corpus/$(tr '[:upper:]' '[:lower:]' <<<"${name#Fuzz}")
  log=$folder/run.log
  mkdir -p "$folder/corpus" "$folder/findings"
  local options
  read -ra options < <(options_of "$name")
  options+=("${@:3}")
  # What is found to be new goes to the first folder; the seeds are only read.
  TZ=UTC "${fixed[@]}" build/fuzz/bin/"$name" "${options[@]}" -print_final_stats=1 \
    -artifact_prefix="$folder/findings/" "$folder/corpus" "$seeds" >"$log" 2>&1 </dev/null || code=$?
  echo "$name: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") inputs in $((SECONDS - began)) s," \
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

fixed=()
if [[ ${1:-} == --check ]]; then
  # Addresses have a part in what is tried next; where they cannot be fixed, only the seeds are.
  if setarch -R true 2>/dev/null; then fixed=(setarch -R); fi
  folder=build/fuzz-check
  how=(-seed=1 -runs="$2")
  shift 2
else
  folder=build/fuzz-runs
  how=(-max_total_time=600)
fi
if [[ ${1:-} =~ ^[0-9]+$ ]]; then
  how=(-max_total_time="$1")
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
  # What an earlier check found to be new would change this one.
  [[ $folder != build/fuzz-check ]] || rm -rf "${folder:?}/$name"
  fuzz "$folder" "$name" "${how[@]}" || findings=$((findings + 1))
done
((findings == 0))
