#!/usr/bin/env bash
# Installs what is missing, builds both targets and runs every test on both.
#   ./scripts/test.sh [--linux | --windows] [--sanitize]
# --linux or --windows takes one target alone; --sanitize adds the sanitizer builds (Linux).
# The last line counts the tests of each run.
set -euo pipefail
. "$(dirname "$0")/common.sh"

linux=1 windows=1 sanitize=0
for option in "$@"; do
    case $option in
    --linux) windows=0 ;;
    --windows) linux=0 ;;
    --sanitize) sanitize=1 ;;
    *) die "unknown option $option" ;;
    esac
done
trap 'stop_wine; unmount_small_disk' EXIT

summary=()
failed=0

# count NAME FILE...: adds up the counts of GoogleTest's reports.
count() {
    local name=$1
    shift
    local figures
    figures=$(python3 scripts/count_tests.py "$@") || failed=1
    summary+=("$name: $figures")
}

# run_program PRESET PROGRAM REPORT [ENVIRONMENT...]: one test program, with its report.
run_program() {
    local preset=$1 program=$2 report=$3
    shift 3
    rm -f "$report"
    local command=("build/$preset/bin/$program") output="xml:$report"
    if [ "$preset" = windows ]; then
        command=("$wine" "build/windows/bin/$program.exe")
        output="xml:Z:${report//\//\\}"
    fi
    # What is skipped is counted from the report; the reasons would drown the failures here.
    local status=0
    { env "$@" timeout 1200 "${command[@]}" --gtest_brief=1 --gtest_output="$output" || status=$?; \
        echo "$status" >"$report.status"; } |
        grep -v -e 'Skipped' -e '^runs with TZ' -e 'the active code page is' -e '^.\?$' || true
    [ "$(cat "$report.status")" = 0 ] || failed=1
}

# run_tests NAME PRESET [ENVIRONMENT...]: every test program of a preset, each with a report.
run_tests() {
    local name=$1 preset=$2
    shift 2
    local reports=() program report
    say "tests: $name"
    for program in zor_tests zor_internal_tests; do
        report="$root/build/$preset/report-$program-${name//[^a-zA-Z0-9]/-}.xml"
        run_program "$preset" "$program" "$report" "$@"
        reports+=("$report")
    done
    count "$name" "${reports[@]}"
}

# run_zones NAME PRESET: the tests that depend on the time zone, once in each zone.
run_zones() {
    local name=$1 preset=$2 zone program report reports=()
    say "tests: $name in seven time zones"
    for zone in UTC Etc/GMT-2 Europe/Prague Asia/Kolkata America/New_York Pacific/Chatham Europe/Moscow; do
        for program in zor_tests zor_internal_tests; do
            report="$root/build/$preset/report-$program-${zone//[^a-zA-Z0-9]/-}.xml"
            run_program "$preset" "$program" "$report" TZ="$zone" ZOR_TEST_ZONE="$zone" \
                GTEST_FILTER='Zone*'
            reports+=("$report")
        done
    done
    count "$name zones" "${reports[@]}"
}

install_packages python3
mount_small_disk
if [ $linux = 1 ]; then
    install_linux_packages
    install_comma_locale
    fetch_sources
    build_preset linux
    run_tests linux linux
    run_zones linux linux
    run_tests "linux de_DE" linux LC_ALL=de_DE.UTF-8
    run_tests "linux code page 1250" linux ZOR_ACP=1250 GTEST_FILTER='-*Crash*'
    run_tests "linux code page 932" linux ZOR_ACP=932 GTEST_FILTER='-*Crash*'
    ./scripts/test_product.sh linux || failed=1
    ./scripts/check_dumps.sh linux || failed=1
fi
if [ $windows = 1 ]; then
    install_windows_packages
    fetch_sources
    fetch_windows_sources
    build_preset windows
    start_wine
    run_tests windows windows ZOR_TEST_SMALL_DISK="${ZOR_TEST_SMALL_DISK:+Z:${ZOR_TEST_SMALL_DISK//\//\\}}"
    run_zones windows windows
    # Wine takes seconds for each dump, and these have none of the locale.
    run_tests "windows de_DE" windows LC_ALL=de_DE.UTF-8 GTEST_FILTER='-*Crash*'
    ./scripts/test_product.sh windows || failed=1
    ./scripts/check_dumps.sh windows || failed=1
    [ $linux = 0 ] || ./scripts/compare_targets.sh || failed=1
fi
if [ $sanitize = 1 ]; then
    install_check_packages
    install_linux_packages
    fetch_sources
    build_preset asan
    # A request that cannot be met gives null, as it does without the checker.
    run_tests "linux address+undefined" asan ASAN_OPTIONS=allocator_may_return_null=1 \
        LSAN_OPTIONS="suppressions=$root/scripts/leak_sanitizer.supp:print_suppressions=0"
    build_preset tsan
    # This checker gives signals on late, when the fault or the standing still is over, and takes a
    # thread that the system refuses for one that it knows.
    run_tests "linux thread" tsan GTEST_FILTER='-*Crash*:Minidump.*:PosixThread.*Refused*' \
        TSAN_OPTIONS="allocator_may_return_null=1 suppressions=$root/scripts/thread_sanitizer.supp"
fi

printf '\n'
if [ $failed = 0 ]; then verdict=PASSED; else verdict=FAILED; fi
(IFS='|'; printf '%s  %s\n' "$verdict" "${summary[*]}") | sed 's/|/;  /g'
exit $failed
