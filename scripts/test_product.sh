#!/usr/bin/env bash
# The product as it is delivered: a host application built from an install of a preset's build, and
# snippets that must not compile.
#   ./scripts/test_product.sh linux|windows   (built before)
set -euo pipefail
. "$(dirname "$0")/common.sh"
preset=${1:?linux or windows}
prefix="$root/build/$preset/installed"
consumer="$root/build/$preset/consumer"
case $preset in
linux) compiler=g++ toolchain=() boost=() ;;
windows)
    compiler=x86_64-w64-mingw32-g++-posix boost=(-isystem "$cache/boost/include")
    toolchain=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake"
        -DBoost_INCLUDE_DIR="$cache/boost/include"
        -DBoost_THREAD_LIBRARY_RELEASE="$cache/boost/lib/libboost_thread.dll.a")
    ;;
*) die "linux or windows, not $preset" ;;
esac

say "product: $preset"
rm -rf "$prefix" "$consumer"
cmake --install "build/$preset" --prefix "$prefix" >/dev/null
cmake -G Ninja -S tests/consumer -B "$consumer" -Dzorutils_DIR="$prefix/lib/cmake/zorutils" "${toolchain[@]}" \
    >"build/$preset/consumer.log" 2>&1 || { cat "build/$preset/consumer.log"; exit 1; }
cmake --build "$consumer" >>"build/$preset/consumer.log" 2>&1 ||
    { cat "build/$preset/consumer.log"; exit 1; }
if [ "$preset" = windows ]; then
    cp "$prefix"/bin/*.dll build/windows/bin/lib*.dll "$consumer"
    start_wine
    (cd "$consumer" && "$wine" consumer.exe)
else
    "$consumer/consumer"
fi

checked=0
for snippet in tests/must_not_compile/*.cpp; do
    # On Windows the plain types come with the system's own header, and its calls.
    [[ $preset = windows && $snippet = *_posix.cpp ]] && continue
    compile=("$compiler" -std=c++17 -Wall -Werror -fsyntax-only -I "$prefix/include" "${boost[@]}" "$snippet")
    "${compile[@]}" -DZOR_CONTROL || die "the control of $snippet does not compile"
    if "${compile[@]}" 2>/dev/null; then die "$snippet compiles"; fi
    checked=$((checked + 1))
done
echo "product: the host ran, $checked snippets refused"
