#!/bin/sh
# Decodes every report of an archive with GNU parallel: archive-parallel.sh ARCHIVE TABLES
for_each() {
    parallel -0 -r -q "$@" {}
}
. "$(dirname "$0")/archive.sh"
