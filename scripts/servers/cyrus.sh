#!/usr/bin/env bash
# Starts and stops Cyrus for the tests: scripts/servers/server.sh tells how. Started by root it runs
# as the user cyrus.
# shellcheck source=scripts/servers/server.sh
source "$(dirname "${BASH_SOURCE[0]}")/server.sh"
reader='' readerPassword=''
programs=/usr/lib/cyrus/bin

account() { if ((EUID == 0)); then echo cyrus; else id -un; fi; }

as_account() {
  if ((EUID == 0)); then
    setpriv --reuid cyrus --regid mail --clear-groups "$@"
  else
    "$@"
  fi
}

prepare() {
  mkdir -p "$folder/spool" "$folder/run" "$folder/lock" \
    "$folder"/conf/{db,log,msg,proc,ptclient,quota,sieve,socket,user}
  # What saslpasswd2 would write, without that program.
  perl -MDB_File -e 'tie my %users, "DB_File", $ARGV[0], O_RDWR | O_CREAT, 0660, $DB_HASH or die;
    $users{"$ARGV[1]\0planner\0userPassword"} = $ARGV[2];' "$folder/users" "$user" "$password"
  cat >"$folder/imapd.conf" <<END
configdirectory: $folder/conf
proc_path: $folder/run
mboxname_lockpath: $folder/lock
defaultpartition: default
partition-default: $folder/spool
lmtpsocket: $folder/conf/socket/lmtp
cyrus_user: $(account)
servername: planner
httpmodules: caldav
allowplaintext: yes
sasl_pwcheck_method: auxprop
sasl_auxprop_plugin: sasldb
sasl_sasldb_path: $folder/users
sasl_mech_list: PLAIN
autocreate_quota: 0
autocreate_users: anyone
autocreate_post: yes
END
  cat >"$folder/cyrus.conf" <<END
START {
  recover cmd="ctl_cyrusdb -C $folder/imapd.conf -r"
}
SERVICES {
  http cmd="httpd -C $folder/imapd.conf" listen="127.0.0.1:$port" proto="tcp4" prefork=1
  lmtp cmd="lmtpd -C $folder/imapd.conf -a" listen="$folder/conf/socket/lmtp" prefork=0
}
END
  ((EUID != 0)) || chown -R cyrus:mail "$folder"
}

serve() {
  local as=()
  ((EUID != 0)) || as=(setpriv --reuid cyrus --regid mail --clear-groups)
  exec "${as[@]}" /usr/lib/cyrus/bin/master -C "$folder/imapd.conf" -M "$folder/cyrus.conf" \
    -p "$folder/master.pid" -D
}

# An account begins with its first letter.
welcome() {
  printf 'From: %s\nTo: %s\nSubject: Welcome\n\nWelcome\n' "$user" "$user" |
    as_account "$programs/deliver" -C "$folder/imapd.conf" "$user" >>"$folder/log" 2>&1
}

run
