#!/bin/bash
# Includes point downwards only. A folder of sources counts twice: once with what it holds without
# a window, once with its dialogs. Says which include climbs, and which folders form a cycle.
set -euo pipefail
cd "$(dirname "$0")/../src"

floors=(base link exchange rooms session venue widgets dialogs app cli tour)

# Files that have to do with the toolkit, and their headers.
with_windows=$(grep -lE '#include (<wx/|"widgets/)' ./*/*.h ./*/*.cpp | sed 's/\.[a-z]*$//' | sort -u)

# FOLDER/STEM -> the node that stands for it
node_of() {
    local folder=${1%%/*}
    case $folder in
        base | link | exchange | session | venue | widgets | app | cli | tour) echo "$folder" ;;
        *) if [[ $'\n'$with_windows$'\n' == *$'\n'"./$1"$'\n'* ]]; then
            echo "$folder-dialogs"
        else
            echo "$folder"
        fi ;;
    esac
}

floor_of() {
    case $1 in
        *-dialogs) echo 7 ;;
        *) for i in "${!floors[@]}"; do
            [[ ${floors[i]} != "$1" ]] || { echo "$i"; return; }
        done
            echo 3 ;;
    esac
}

failed=0
edges=
declare -A nodes
while IFS=: read -r file line; do
    from=${file#./} to=${line#*\"}
    from=${from%.*} to=${to%.h\"*}
    [[ -e $to.h ]] || continue # of another tree
    for name in "$from" "$to"; do
        [[ -n ${nodes[$name]:-} ]] || nodes[$name]=$(node_of "$name")
    done
    lower=${nodes[$to]} upper=${nodes[$from]}
    [[ $lower != "$upper" ]] || continue
    edges+="$upper $lower"$'\n'
    if (($(floor_of "$lower") > $(floor_of "$upper"))); then
        echo "$file includes $to.h, which is above it" >&2
        failed=1
    fi
    # Windows go through the main window's links: a second connection to a player is in their way.
    if [[ $lower == session && $upper =~ ^(widgets|app|tour|.*-dialogs)$ ]]; then
        echo "$file has to do with windows, and includes $to.h" >&2
        failed=1
    fi
    # The pages on which players are chosen are there for the features' wizards.
    if [[ $lower == *-dialogs && $lower != devices-dialogs && $upper == *-dialogs ]]; then
        echo "$file includes a dialog of another room: $to.h" >&2
        failed=1
    fi
done < <(grep -oE '#include "[^"]+"' ./*/*.h ./*/*.cpp)

if ! tsort <<<"$edges" >/dev/null; then
    echo "The folders above form a cycle." >&2
    failed=1
fi
exit "$failed"
