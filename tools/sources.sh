#!/bin/bash
# Lists the project's C++ sources and headers.
set -euo pipefail
cd "$(dirname "$0")/.."

find src simulator tests bench fuzz \( -name '*.h' -o -name '*.cpp' \) | sort
