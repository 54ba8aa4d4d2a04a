#!/usr/bin/env bash
# Has a debugger that knows nothing of this project open the dump of a fault.
#   ./scripts/check_dumps.sh linux|windows
# The program faults on purpose; LLDB must name the exception, the place, and every thread.
set -euo pipefail
. "$(dirname "$0")/common.sh"

target=${1:?the target: linux or windows}
install_packages lldb
work=$(mktemp -d)
finish() {
    rm -rf "$work"
    [ -z "${own_wine:-}" ] || stop_wine
}
trap finish EXIT
mkdir -p "$work/app/lang" "$work/user"
cp "build/$target/bin/lang/"* "$work/app/lang/"

case $target in
linux)
    cp -a build/linux/bin/survey_road build/linux/bin/libzorutils.so* "$work/app/"
    user=${work//\//\\}\\user
    run=("$work/app/survey_road")
    expected=222
    ;;
windows)
    cp build/windows/bin/survey_road.exe build/windows/bin/*.dll "$work/app/"
    user=Z:${work//\//\\}\\user
    [ -n "${DISPLAY:-}" ] || own_wine=1
    start_wine
    run=("$wine" "$work/app/survey_road.exe")
    expected='' # the launcher's is not the program's
    ;;
*) die "unknown target $target" ;;
esac

printf '[Directories]\r\nUser=%s\r\n' "$user" >"$work/app/zor_dir.ini"
status=0
timeout -s KILL 120 "${run[@]}" --crash-test >"$work/out" 2>&1 || status=$?
[ -z "$expected" ] || [ "$status" = "$expected" ] || die "the program ended with $status"
dump="$work/user/SupportInfo/Dumps/0/dump.dmp"
[ -s "$dump" ] || die "no dump was written"
timeout -s KILL 300 lldb --batch -c "$dump" -o 'thread list' -o 'bt all' -o 'image list' \
    </dev/null >"$work/seen" 2>&1 || { cat "$work/seen"; die "the debugger refused the dump"; }

# expect PATTERN WHAT
expect() {
    grep -qE "$1" "$work/seen" || { cat "$work/seen"; die "the debugger does not show $2"; }
}
threads=$(grep -cE '^[* ] *thread #[0-9]+: tid' "$work/seen" || true)
[ "$threads" = 2 ] || { cat "$work/seen"; die "$threads threads instead of 2"; }
if [ "$target" = linux ]; then
    expect 'stop reason = signal SIGSEGV' 'the exception'
    expect 'survey_road`survey_road::.*fault_on_purpose' "the faulting function's name"
    expect 'libzorutils\.so[^ ]*`zor::platform::guarded_call' 'the guard below it'
    expect 'WaitForSingleObject' 'what the other thread does'
    expect 'image list' 'modules'
    expect '[0-9A-F-]{36,} 0x[0-9a-f]+ .*/libzorutils\.so' "the library's build id"
else
    expect 'stop reason = Exception 0xc0000005' 'the exception'
    expect '^\* thread #[0-9]+: tid = 0x[0-9a-f]+, 0x0000000[0-9a-f]+ survey_road\.exe' \
        'the module at fault and the place in it'
    expect 'zorutils\.dll' 'the library among the modules'
fi
say "the dump of $target: $threads threads, $(stat -c %s "$dump") bytes, opened by $(lldb --version 2>/dev/null | head -1)"
