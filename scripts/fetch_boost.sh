#!/usr/bin/env bash
# Builds Boost.Filesystem and Boost.Thread for Windows into .cache/boost, from the Debian source
# package of the version that the Linux build links. A second run finds them and does nothing.
set -euo pipefail
. "$(dirname "$0")/common.sh"

package=boost1.74
target="$cache/boost"
[ -f "$target/complete" ] && exit 0
install_packages libboost1.74-tools-dev g++-mingw-w64-x86-64-posix dpkg-dev

mkdir -p "$cache"
work=$(mktemp -d "$cache/boost.XXXXXX")
trap 'rm -rf "$work"' EXIT
download_source "$package" "$work"
archive=$(ls "$work/download/${package}_"*.orig.tar.* | grep -v '\.asc$' | head -n 1)
mkdir "$work/source"
say "building Boost for Windows"
tar --extract --file "$archive" --directory "$work/source" --strip-components 1
echo "using gcc : mingw : x86_64-w64-mingw32-g++-posix ;" >"$work/user-config.jam"
(cd "$work/source" && b2 -q -j2 -d0 --user-config="$work/user-config.jam" \
    --build-dir="$work/build" --prefix="$work/installed" --layout=system --ignore-site-config \
    --with-filesystem --with-thread --with-date_time --with-atomic toolset=gcc-mingw target-os=windows threadapi=win32 \
    address-model=64 architecture=x86 binary-format=pe abi=ms link=shared variant=release \
    threading=multi runtime-link=shared install >"$work/log" 2>&1) ||
    { tail -n 40 "$work/log" >&2; die "Boost can't be built"; }
rm -rf "$target"
mv "$work/installed" "$target"
touch "$target/complete"
