#!/usr/bin/env bash
# A throw-away PostgreSQL cluster for the tests: initdb into a temporary folder, a Unix
# socket in that folder and no TCP port. Runs as the `postgres` system user when started
# as root (initdb refuses root). Two databases: cp_c (C collation) and cp_utf8 (C.UTF-8).
#   pg-test-server.sh start DIR   prints nothing; writes DIR/conninfo.env
#   pg-test-server.sh stop DIR    stops the server and removes DIR
# Without the server binaries `start` says so in one line and exits 0, writing no conninfo.
set -euo pipefail
action=$1 dir=$2
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1 || true)
as_owner() {
  if [ "$(id -u)" -eq 0 ]; then runuser -u postgres -- "$@"; else "$@"; fi
}
case $action in
  start)
    "$0" stop "$dir"  # a cluster left by an interrupted run
    if [ -z "$bin" ] || [ ! -x "$bin/initdb" ]; then
      echo "PostgreSQL server binaries not found: the PostgreSQL tests will be skipped."
      exit 0
    fi
    mkdir -p "$dir"
    [ "$(id -u)" -eq 0 ] && chown postgres: "$dir" && chmod 700 "$dir"
    as_owner "$bin/initdb" -D "$dir/data" -U postgres -E UTF8 --locale=C -A trust >"$dir/initdb.log" 2>&1 ||
      { cat "$dir/initdb.log"; exit 1; }
    # One role that must give a password, for the wrong-password test.
    as_owner sed -i '1i local all cp_secret scram-sha-256' "$dir/data/pg_hba.conf"
    as_owner "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w \
      -o "-c listen_addresses='' -k $dir -c fsync=off -c max_connections=60" start >/dev/null ||
      { cat "$dir/server.log"; exit 1; }
    psql=("$bin/psql" -h "$dir" -U postgres -d postgres -qAt -v ON_ERROR_STOP=1)
    "${psql[@]}" -c "CREATE DATABASE cp_c TEMPLATE template0 LC_COLLATE 'C' LC_CTYPE 'C'"
    "${psql[@]}" -c "CREATE DATABASE cp_utf8 TEMPLATE template0 LC_COLLATE 'C.UTF-8' LC_CTYPE 'C.UTF-8'"
    "${psql[@]}" -c "CREATE ROLE cp_secret LOGIN PASSWORD 'correcta'"
    # Tests make their own databases from these (sockets folder: reachable by root and postgres).
    chmod 755 "$dir"
    echo "host=$dir user=postgres" >"$dir/conninfo"
    ;;
  stop)
    if [ -n "$bin" ] && [ -d "$dir/data" ]; then
      as_owner "$bin/pg_ctl" -D "$dir/data" -m immediate stop >/dev/null 2>&1 || true
    fi
    rm -rf "$dir"
    ;;
esac
