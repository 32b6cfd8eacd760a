#!/bin/bash
# build.sh [TARGET...]: builds the Windows programs, and before that the libraries they take.
set -euo pipefail
cd "$(dirname "$0")/../.."

SONTARO_WINDOWS_LIBRARIES=$(tools/windows/libraries.sh)
export SONTARO_WINDOWS_LIBRARIES
exec tools/build.sh windows "$@"
