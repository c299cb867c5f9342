#!/usr/bin/env bash
# Counts with callgrind the instructions of one call of several operations, in the library and in a
# hand-written twin, and prints both and their ratio. Exits with 1 if a ratio is above 1.05.
# usage: bench/overhead.sh [BUILD-FOLDER]
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
program=${1:-$root/build/native}/bin/overhead_bench

# All instructions of a run of the program.
count() {
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$program" "$@" 2>&1 |
        sed -n 's/.*Collected : \([0-9]*\).*/\1/p'
}

# Instructions of one call: what 1000 calls more cost, divided by 1000.
per_call() {
    local few many
    few=$(count "$1" "$2" 1000)
    many=$(count "$1" "$2" 2000)
    echo $(((many - few) / 1000))
}

status=0
printf '%-20s %8s %8s %6s\n' operation library twin ratio
for operation in set_number get_number set_machine_number set_text get_text get_machine_text; do
    library=$(per_call "$operation" library)
    twin=$(per_call "$operation" twin)
    ratio=$(awk -v a="$library" -v b="$twin" 'BEGIN { printf "%.3f", a / b }')
    printf '%-20s %8d %8d %6s\n' "$operation" "$library" "$twin" "$ratio"
    awk -v r="$ratio" 'BEGIN { exit r > 1.05 }' || status=1
done
exit $status
