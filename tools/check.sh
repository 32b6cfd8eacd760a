#!/bin/bash
# Everything that a change has to pass besides the plain tests. Stops at the first failure.
set -euo pipefail
cd "$(dirname "$0")/.."

sanitizers=$PWD/tools/sanitizers
steps=()

step() {
    local name=$1 start=$SECONDS
    shift
    echo
    echo "== $name"
    if ! "$@"; then
        echo "FAILED: $name" >&2
        exit 1
    fi
    steps+=("$(printf '%-32s passed in %4d s' "$name" $((SECONDS - start)))")
}

tests_under() {
    tools/build.sh "$1" && tools/headless.sh ctest --preset "$1" -j2
}

fuzz() {
    local target=$1 folder=build/fuzz/run/$1
    mkdir -p "$folder/corpus" &&
        cp -r "fuzz/corpus/$target/." "$folder/corpus" &&
        tools/build.sh fuzz "$target" &&
        build/fuzz/fuzz/"$target" -max_total_time=60 -print_final_stats=1 -verbosity=0 \
            -artifact_prefix="$folder/" "$folder/corpus"
}

export ASAN_OPTIONS=detect_leaks=1
export LSAN_OPTIONS=suppressions=$sanitizers/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
export TSAN_OPTIONS=suppressions=$sanitizers/tsan.supp:history_size=7:second_deadlock_stack=1

step "format" tools/format.sh --dry-run -Werror
step "includes" tools/check_includes.sh
step "hosts" tools/check_hosts.sh
step "clang-tidy" tools/tidy.sh
step "tests, asan-ubsan" tests_under asan-ubsan
step "tests, tsan" tests_under tsan
step "fuzz_reassembly, one minute" fuzz fuzz_reassembly
step "fuzz_discovery_reply, one minute" fuzz fuzz_discovery_reply
step "fuzz_osd_document, one minute" fuzz fuzz_osd_document
step "fuzz_custom_settings, one minute" fuzz fuzz_custom_settings
step "fuzz_control_protocol, one minute" fuzz fuzz_control_protocol
step "fuzz_video_list, one minute" fuzz fuzz_video_list
step "fuzz_player_control, one minute" fuzz fuzz_player_control
step "fuzz_timeline, one minute" fuzz fuzz_timeline
step "fuzz_screen_split, one minute" fuzz fuzz_screen_split
step "fuzz_batch_send, one minute" fuzz fuzz_batch_send
step "fuzz_session, one minute" fuzz fuzz_session
step "fuzz_manifest, one minute" fuzz fuzz_manifest
step "fuzz_cli_values, one minute" fuzz fuzz_cli_values

echo
printf '%s\n' "${steps[@]}"
