#!/bin/bash
# format.sh [OPTION...]: lays the C++ sources out in place, or does what the options say.
set -euo pipefail
cd "$(dirname "$0")/.."

(($#)) || set -- -i
tools/sources.sh | xargs clang-format-14 "$@"
