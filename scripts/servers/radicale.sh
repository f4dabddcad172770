#!/usr/bin/env bash
# Starts and stops Radicale for the tests: scripts/servers/server.sh tells how. The reader may read
# the user's calendars and change nothing.
# shellcheck source=scripts/servers/server.sh
source "$(dirname "${BASH_SOURCE[0]}")/server.sh"

prepare() {
  printf '%s:%s\n' "$user" "$password" "$reader" "$readerPassword" >"$folder/users"
  cat >"$folder/rights" <<END
[root]
user: .+
collection:
permissions: R
[principal]
user: .+
collection: {user}
permissions: RW
[calendars]
user: .+
collection: {user}/[^/]+
permissions: rw
[reader]
user: $reader
collection: $user(/[^/]+)?
permissions: Rr
END
  cat >"$folder/config" <<END
[server]
hosts = 127.0.0.1:$port
[auth]
type = htpasswd
htpasswd_filename = $folder/users
htpasswd_encryption = plain
delay = 0
[rights]
type = from_file
file = $folder/rights
[storage]
filesystem_folder = $folder/collections
END
}

serve() { exec radicale --config "$folder/config"; }

run
