#!/bin/sh
# Decodes every report NAME.txt below ARCHIVE, as many at once as there are processors: NAME.csv below TABLES holds its
# table, or NAME.err the message when the report is refused. messages.txt gathers the messages.
#
#     archive-xargs.sh ARCHIVE TABLES
set -eu
mkdir -p "$2"
tables=$(cd "$2" && pwd)

cd "$1"
# shellcheck disable=SC2016 # expanded by the inner shell
find . -name '*.txt' -print0 | xargs -0 -r -n 1 -P "$(nproc)" sh -c '
    table=$1/${2%.txt}
    mkdir -p "${table%/*}"
    if corvane "$2" >"$table.csv" 2>"$table.err"; then rm "$table.err"; else rm "$table.csv"; fi' decode "$tables"

cd "$tables"
find . -name '*.err' -exec grep -H '' {} + | sort >messages.txt
