#!/bin/sh
# Measures a file of logs and prints each line with its volume, then the total:
#
#     measure_logs.sh TAMAROK FILE        for example: measure_logs.sh tamarok logs.csv
#
# FILE has a header line with at least the columns d (diameter in cm) and l (length in m), and if wanted
# pieces, bark and mode; `tamarok volume --help` tells the rest. Lines that cannot be measured are reported on
# standard error and left out; the exit status is then 1.
set -eu

if [ $# -ne 2 ]; then
    echo "usage: measure_logs.sh TAMAROK FILE" >&2
    exit 2
fi

measured=$(mktemp)
trap 'rm -f "$measured"' EXIT

status=0
"$1" volume --csv "$2" --locale en-GB --places 3 >"$measured" || status=$?
cat "$measured"

# The volume is the last field of each line. The locale of awk must not ask for a decimal comma.
LC_ALL=C awk -F '[;,]' 'NR > 1 { total += $NF } END { printf "total volume: %.3f m³\n", total }' "$measured"
exit "$status"
