#!/usr/bin/env bash
# Builds the fuzzers and runs each from its corpus.
#   ./scripts/fuzz.sh [SECONDS]   seconds for each fuzzer, 30 if not given
# What an input finds is kept in build/fuzz/found; put it into fuzz/corpus with the repair.
set -euo pipefail
. "$(dirname "$0")/common.sh"
seconds=${1:-30}
[[ $seconds =~ ^[0-9]+$ ]] || die "SECONDS is a number, not $seconds"
install_linux_packages
install_check_packages
fetch_sources
build_preset fuzz
status=0
for program in build/fuzz/bin/fuzz_*; do
    name=${program##*/fuzz_}
    say "fuzzing $name for $seconds s"
    mkdir -p "build/fuzz/grown/$name" "build/fuzz/found"
    ASAN_OPTIONS=allocator_may_return_null=1 "$program" -max_total_time="$seconds" -max_len=512 \
        -timeout=20 -print_final_stats=0 -verbosity=0 -artifact_prefix="build/fuzz/found/$name-" \
        "build/fuzz/grown/$name" "fuzz/corpus/$name" 2>"build/fuzz/$name.log" || { status=1; cat "build/fuzz/$name.log"; }
    grep -E "^Done" "build/fuzz/$name.log" || true
done
[ $status = 0 ] || die "a fuzzer found something: see build/fuzz/found"
echo "fuzzing: nothing found"
