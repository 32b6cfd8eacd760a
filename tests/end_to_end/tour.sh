#!/usr/bin/env bash
# The tour through every feature succeeds and leaves its pictures.
# Usage: tour.sh SONTARO LANGUAGE
sontaro=$1 language=$2
source "$(dirname "$0")/session.sh"

"$sontaro" --demo --tour "$work/pictures" --language "$language"
[ "$(find "$work/pictures" -name '*.png' -size +1k | wc -l)" -ge 21 ] || fail "pictures are missing"
