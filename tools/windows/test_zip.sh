#!/bin/bash
# Within wine.sh: unpacks the zip and takes the tour with what was in it.
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/windows/try_program.sh

unzip -q build/packages/sontaro-*-windows-x86_64.zip -d "$work/软件"
try_program "$work"/软件/sontaro-*
