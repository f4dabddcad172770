#!/usr/bin/env bash
# Installs what is missing, builds both faces and runs every test, native and under Wine.
# The last line is the counts; the exit code is not zero when anything failed or nothing ran.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 1
export LC_ALL=C.UTF-8
CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL

# Fuzzing takes a build of its own: VELKOR_FUZZ_RUNS=2000 ./test.sh
fuzz_runs=${VELKOR_FUZZ_RUNS:-0}

# shellcheck source=scripts/stages.sh
source scripts/stages.sh

finish() {
  local code=$?
  scripts/wine-run.sh --stop >/dev/null 2>&1
  ((code == 0 && failed == 0 && passed > 0)) || code=1
  printf '%5d s  in all\n' "$SECONDS"
  echo "$passed passed, $failed failed, $skipped skipped"
  exit "$code"
}
trap finish EXIT
trap 'failed=$((failed + 1)); exit 1' INT TERM

give_up() {
  failed=$((failed + 1))
  exit 1
}

# build PRESET
build() {
  cmake --preset "$1" && cmake --build --preset "$1"
}

# Wine's prefix is made while the compiler works.
start_prefix() {
  scripts/wine-run.sh --fresh >/dev/null 2>build/logs/wine.log &
  prefix=$!
}
join_prefix() {
  wait "$prefix" || { cat build/logs/wine.log && return 1; }
}

groups=(desktop test windows package)
((fuzz_runs == 0)) || groups+=(fuzz)
run_packages "${groups[@]}" || give_up

run_check "layout of the sources" scripts/format.sh

if run_stage "build linux" build linux; then
  run_tests "native tests" linux
else
  failed=$((failed + 1))
fi

if [[ $(uname -m) != x86_64 ]]; then
  # Counted from the sources: the programs cannot even be built here.
  unrun=$(find tests -name '*.cpp' -not -path 'tests/house/*' -not -path 'tests/hosts/*' \
    -not -path 'tests/platform/desktop/*' -exec grep -hE '^TEST(_F|_P)?\(' {} + | wc -l)
  echo "         Wine needs an x86-64 processor: the tests of the Windows build are skipped"
  skipped=$((skipped + unrun))
elif start_prefix && run_stage "build mingw" build mingw; then
  run_stage "wine prefix" join_prefix || give_up
  # They wait for one another's processes most of the time.
  run_tests "tests under Wine" mingw 4
  scripts/wine-run.sh --stop
else
  failed=$((failed + 1))
fi

if ((fuzz_runs > 0)) && run_stage "build fuzz" scripts/fuzz.sh --build; then
  while read -r target; do
    run_check "fuzz $target" scripts/fuzz.sh --check "$fuzz_runs" "$target"
  done < <(scripts/fuzz.sh --list)
elif ((fuzz_runs > 0)); then
  failed=$((failed + 1))
fi
