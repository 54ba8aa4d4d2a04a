#!/usr/bin/env bash
# Runs the host program of both targets on the same files, and compares what they print, say and
# write: byte for byte, but for the line ends of what is printed.
#   ./scripts/compare_targets.sh [FILE...]   (both targets built before)
# Without FILE: the sample, odd files made here, and the real data beside the checkout if present.
set -euo pipefail
given=()
for file in "$@"; do given+=("$(realpath "$file")"); done
. "$(dirname "$0")/common.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/linux" "$work/windows"
if [ ${#given[@]} -gt 0 ]; then
    cp "${given[@]}" "$work/linux"
else
    cp examples/survey_road/sample/* "$work/linux"
    for file in ../shared/data/topo0.asc ../shared/data/surface.xml; do
        [ ! -e "$file" ] || cp "$file" "$work/linux"
    done
    python3 - "$work/linux" <<'PY'
import pathlib, sys
folder = pathlib.Path(sys.argv[1])
folder.joinpath("halves.txt").write_bytes(
    b"H1;0.5;1.25;62.125\nH2;2.675;-0.125;1e3\nH3;1.0005;2.00000005;-0\r\nbad;line\nH4;x;1;2\n")
folder.joinpath("names.txt").write_bytes(b"P9 1 2 3\rP10 1,5 2 3\r\n\n\x8a\x9e\xe9 4 5 6 caf\xe9\nP9 1 2 3\n")
folder.joinpath("units.csv").write_bytes("\ufeffA1,1,2,3,\u010cesk\u00e1\r\nA2,4,5,6,\U0001F600\r\n".encode("utf-16-le"))
folder.joinpath("broken.xml").write_bytes(b'<?xml version="1.0"?>\n<CgPoints>\n<CgPoint name="a&amp;b">1 2</CgPoint>\n<CgPoint>3 4</CgPoint>\n<CgPoint name="c">x y</CgPoint>\n')
folder.joinpath("empty.txt").write_bytes(b"")
folder.joinpath("binary.txt").write_bytes(bytes(range(256)))
PY
fi
cp "$work"/linux/* "$work/windows"
start_wine

# run TARGET NAME ARGUMENT...: what a run prints, says, and ends with.
run() {
    local target=$1 name=$2 code=0
    shift 2
    local command=("$root/build/linux/bin/survey_road")
    [ "$target" = linux ] || command=("$wine" "$root/build/windows/bin/survey_road.exe")
    (cd "$work/$target" && timeout 300 "${command[@]}" "$@" >"$work/$target.out" \
        2>"$work/$target.err") || code=$?
    sed -i 's/\r$//' "$work/$target.out" "$work/$target.err"
    echo "$code" >"$work/$target.code"
}

runs=0 different=0
# compare ARGUMENT...: the same command on both targets.
compare() {
    run linux "$runs" "$@"
    run windows "$runs" "$@"
    runs=$((runs + 1))
    local what
    for what in out err code; do
        cmp -s "$work/linux.$what" "$work/windows.$what" && continue
        different=$((different + 1))
        echo "differs: survey_road $* ($what)"
        diff "$work/linux.$what" "$work/windows.$what" | head -n 10 || true
    done
}

files=()
for file in "$work"/linux/*; do files+=("${file##*/}"); done
for file in "${files[@]}"; do
    for precision in 0 3 9; do
        compare --precision "$precision" --out "job-$precision-$file.xml" -- "$file"
    done
done
compare --check -- "${files[@]}" missing.txt
compare --help
compare --lang de --bearings -- site.csv halves.txt
compare --lang cs --columns -- "${files[@]}"
compare --wrong
for job in "$work"/linux/job-*; do
    runs=$((runs + 1))
    cmp -s "$job" "$work/windows/${job##*/}" && continue
    different=$((different + 1))
    echo "differs: ${job##*/}"
done
echo "targets: $runs outputs compared, $different differ"
[ $different = 0 ]
