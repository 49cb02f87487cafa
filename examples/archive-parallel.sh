#!/bin/sh
# Decodes every report NAME.txt below ARCHIVE with GNU parallel: NAME.csv below TABLES holds its table, or NAME.err the
# message when the report is refused. messages.txt gathers the messages.
#
#     archive-parallel.sh ARCHIVE TABLES
set -eu
mkdir -p "$2"
tables=$(cd "$2" && pwd)
export tables

cd "$1"
# shellcheck disable=SC2016 # expanded by the inner shell
find . -name '*.txt' -print0 | parallel -0 -r '
    mkdir -p "$tables"/{//}
    if corvane {} >"$tables"/{.}.csv 2>"$tables"/{.}.err; then rm "$tables"/{.}.err; else rm "$tables"/{.}.csv; fi'

cd "$tables"
find . -name '*.err' -exec grep -H '' {} + | sort >messages.txt
