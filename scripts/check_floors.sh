#!/usr/bin/env bash
# check_floors.sh [ROOT]: which folder may include which, in one place. Fails with one line for each breach:
#   floor     a folder includes one that it may not know
#   path      a quoted include is not the path, from the root, of a file that is there
#   cycle     headers include each other in a ring
#   os        a header of the operating system (or an unknown library) outside the folders that may know one
#   platform  a portable file asks which platform it is compiled for
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "${1:-$here/..}"

find . \( -path ./build -o -name '.?*' \) -prune -o -type f \( -name '*.h' -o -name '*.cpp' \) -printf '%P\n' |
    LC_ALL=C sort | LC_ALL=C awk -f "$here/check_floors.awk"
