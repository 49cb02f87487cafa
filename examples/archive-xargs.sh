#!/bin/sh
# Decodes every report of an archive, as many at once as there are processors: archive-xargs.sh ARCHIVE TABLES
for_each() {
    xargs -0 -r -n 1 -P "$(nproc)" "$@"
}
. "$(dirname "$0")/archive.sh"
