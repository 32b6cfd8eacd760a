#!/usr/bin/env bash
# The tour through every feature succeeds and leaves its pictures, in a folder with a Chinese name,
# which the locale does not know.
# Usage: tour.sh SONTARO LANGUAGE
sontaro=$1 language=$2
source "$(dirname "$0")/session.sh"

LC_ALL=C "$sontaro" --demo --tour "$work/图片" --language "$language"
[ "$(find "$work/图片" -name '*.png' -size +1k | wc -l)" -ge 31 ] || fail "pictures are missing"
