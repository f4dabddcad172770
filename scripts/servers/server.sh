# scripts/servers/server.sh: starts and stops a calendar server of the tests, for the script of each
# server, which sources it with its own arguments and defines
#   prepare   writes what the server needs into $folder, once
#   serve     replaces the shell by the server, at $port on 127.0.0.1
#   welcome   (optional) makes the accounts known to the server that now runs
# Two people have an account: $user and $reader.
#   SCRIPT start FOLDER [OWNER]   starts it with all it keeps below FOLDER, waits until it answers and
#                                 prints url=, user=, password=, reader=, readerPassword= and pid=, one
#                                 a line; it ends with the process OWNER at the latest. A folder used
#                                 before gives the same data at the same address again.
#   SCRIPT stop FOLDER            ends it
# shellcheck shell=bash
set -euo pipefail

user=tom password=toms-secret
reader=eva readerPassword=evas-secret
verb=${1:-} folder=${2:-} owner=${3:-}

usage() {
  sed -n '2,${/^#/!q;p}' "${BASH_SOURCE[0]}" >&2
  exit 2
}

answers() { (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; }

# A port below those that the system gives to clients, so that nobody happens to hold it.
choose_port() {
  for ((try = 0; try < 50; ++try)); do
    port=$((20000 + RANDOM % 12000))
    answers || return 0
  done
  echo "no free port" >&2
  exit 1
}

# launch: starts the server; fails when it ended or says nothing for too long.
launch() {
  (
    exec >>"$folder/log" 2>&1 </dev/null
    # A group of its own, so that all its processes end together.
    export -f serve
    export folder port
    exec setsid bash -c serve
  ) &
  pid=$!
  echo "$pid" >"$folder/pid"
  for ((try = 0; try < 300; ++try)); do
    kill -0 "$pid" 2>/dev/null || return 1
    ! answers || return 0
    sleep 0.1
  done
  return 1
}

start() {
  mkdir -p "$folder"
  folder=$(cd "$folder" && pwd)
  local tries=5
  if [[ -s $folder/port ]]; then
    port=$(<"$folder/port") tries=1
  fi
  while true; do
    [[ -s $folder/port ]] || { choose_port && prepare; }
    launch && break
    stop
    if ((--tries <= 0)); then
      tail -n 20 "$folder/log" >&2
      exit 1
    fi
  done
  echo "$port" >"$folder/port"
  welcome
  if [[ -n $owner ]]; then
    (
      exec >/dev/null 2>&1 </dev/null
      tail --pid="$owner" -f /dev/null
      # Unless it was stopped, or another started here, meanwhile.
      [[ ! -s $folder/pid || $(<"$folder/pid") != "$pid" ]] || stop
    ) &
  fi
  printf '%s=%s\n' url "http://127.0.0.1:$port/" user "$user" password "$password" \
    reader "$reader" readerPassword "$readerPassword" pid "$pid"
}

stop() {
  [[ -s $folder/pid ]] || return 0
  local pid try
  pid=$(<"$folder/pid")
  rm -f "$folder/pid"
  kill -- "-$pid" 2>/dev/null || return 0
  for ((try = 0; try < 50; ++try)); do
    kill -0 -- "-$pid" 2>/dev/null || return 0
    sleep 0.1
  done
  kill -KILL -- "-$pid" 2>/dev/null || true
}

welcome() { :; }

run() {
  [[ -n $folder ]] || usage
  case $verb in
    start | stop) "$verb" ;;
    *) usage ;;
  esac
}
