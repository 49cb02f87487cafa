# shellcheck shell=sh
# Decodes every report of an archive. Read by archive-xargs.sh and archive-parallel.sh, which define for_each: it runs a
# command for every NUL-terminated name on standard input, with the name as last argument, and fails if one fails.
set -eu
unset CDPATH
script=${0##*/}
usage="usage: $script ARCHIVE TABLES

Decodes every report NAME.txt below the folder ARCHIVE. Below the folder TABLES, NAME.csv gets the table, or NAME.err
the message if the report is refused; messages.txt gets one line for each refused report. The last line says how many
reports were decoded, refused, or gave a table without a row, such as an empty file."

case ${1:-} in
-h | --help)
    printf '%s\n' "$usage"
    exit 0
    ;;
esac
if [ $# -ne 2 ] || [ ! -d "$1" ]; then
    printf '%s\n' "$usage" >&2
    exit 2
fi
if ! command -v corvane >/dev/null; then
    echo "$script: there is no program corvane in PATH" >&2
    exit 1
fi
mkdir -p "$2"
if [ "$(cd "$1" && pwd -P)" = "$(cd "$2" && pwd -P)" ]; then
    echo "$script: ARCHIVE and TABLES must not be the same folder" >&2
    exit 2
fi
tables=$(cd "$2" && pwd)
results=$(mktemp)
trap 'rm -f "$results"' EXIT

# One report: its result replaces an earlier one only when it is complete. Prints one line.
# shellcheck disable=SC2016 # expanded by the inner shell
decode='
    name=${2%.txt}
    result=$1/$name
    mkdir -p "${result%/*}"
    ulimit -c 0
    status=0
    exec 3>&2 2>/dev/null  # no word from the shell about an abnormal end
    (exec corvane "$2" >"$result.csv.new" 2>"$result.err.new") || status=$?
    exec 2>&3
    case $status in
    0)
        mv "$result.csv.new" "$result.csv"
        rm -f "$result.err" "$result.err.new"
        if [ "$(wc -l <"$result.csv")" -gt 1 ]; then echo decoded; else echo empty; fi
        ;;
    1 | 134)  # refused; 134 is an abnormal end
        [ -s "$result.err.new" ] || echo "no message" >"$result.err.new"
        mv "$result.err.new" "$result.err"
        rm -f "$result.csv" "$result.csv.new"
        printf "refused %s.err:%s\n" "$name" "$(sed "s/^ *//" "$result.err" | tr "\n" " " | sed "s/ $//")"
        ;;
    *)  # nothing is known about the report
        rm -f "$result.csv.new" "$result.err.new"
        echo "$2: corvane ended with status $status" >&2
        exit 1
        ;;
    esac'

# Not TABLES, which may be below ARCHIVE.
cd "$1"
status=0
find . -samefile "$tables" -prune -o -type f -name '*.txt' -print0 |
    for_each sh -euc "$decode" decode "$tables" >"$results" || status=$?

sed -n 's/^refused //p' "$results" | sort >"$tables/messages.txt.new"
mv "$tables/messages.txt.new" "$tables/messages.txt"
awk '{ ++count[$1] }
    END { printf "%d decoded, %d refused, %d without a row\n", count["decoded"], count["refused"], count["empty"] }' \
    "$results"
exit "$status"
