#!/usr/bin/env bash
# Starts and stops Xandikos for the tests: scripts/servers/server.sh tells how. It asks for no
# password and knows one person only.
# shellcheck source=scripts/servers/server.sh
source "$(dirname "${BASH_SOURCE[0]}")/server.sh"
reader='' readerPassword=''

prepare() { mkdir -p "$folder/collections"; }

serve() {
  exec xandikos --directory "$folder/collections" --listen-address 127.0.0.1 --port "$port" \
    --current-user-principal /tom/ --defaults
}

run
