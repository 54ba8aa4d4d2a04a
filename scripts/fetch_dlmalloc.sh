#!/usr/bin/env bash
# Fetches the published dlmalloc 2.8.6 into .cache/dlmalloc/malloc.c, from the Debian source package
# that carries it unmodified in substance (the heap is compiled with its upstream switch on).
# A second run finds the file and does nothing.
set -euo pipefail
. "$(dirname "$0")/common.sh"

package=wasi-libc
member=dlmalloc/src/malloc.c
sha256=22c1995baed5659a0002cb396d6d83e678c92199e893a02d916cadc142d3ada2
target="$cache/dlmalloc/malloc.c"

is_right() { [ -f "$1" ] && printf '%s  %s\n' "$sha256" "$1" | sha256sum --check --status; }

is_right "$target" && exit 0
mkdir -p "$cache/dlmalloc"
work=$(mktemp -d "$cache/dlmalloc/fetch.XXXXXX")
trap 'rm -rf "$work"' EXIT
download_source "$package" "$work"
archive=$(ls "$work/download/${package}_"*.orig.tar.* | grep -v '\.asc$' | head -n 1)
tar --extract --to-stdout --file "$archive" --wildcards "*/$member" >"$work/malloc.c"
is_right "$work/malloc.c" || die "$member of $package isn't the file that was expected"
mv "$work/malloc.c" "$target"
