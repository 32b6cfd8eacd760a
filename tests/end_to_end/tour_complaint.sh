#!/usr/bin/env bash
# The tour fails when the toolkit complains: here of a style of the user's.
# Usage: tour_complaint.sh SONTARO
sontaro=$1
source "$(dirname "$0")/session.sh"

mkdir -p "$XDG_CONFIG_HOME/gtk-3.0"
echo "window { nonsense: 1; }" >"$XDG_CONFIG_HOME/gtk-3.0/gtk.css"
status=0
timeout 60 "$sontaro" --demo --tour "$work/pictures" >"$work/tour.log" 2>&1 || status=$?
[ "$status" -eq 1 ] || fail "it has ended with $status"
grep -q "FAILED the toolkit complains: Theme parsing error" "$work/tour.log" || fail "it does not say why"
