#!/usr/bin/env bash
# Fetches the published dlmalloc 2.8.6 into .cache/dlmalloc/malloc.c, from the Debian source package
# that carries it unmodified in substance (the heap is compiled with its upstream switch on).
#
# Asks the machine's own Debian mirrors, read from apt's configuration, for source packages. All that
# apt writes goes to a temporary folder: the system's lists, cache and configuration stay as they
# are, and no rights are needed. A second run finds the file and does nothing.
set -euo pipefail
. "$(dirname "$0")/common.sh"

package=wasi-libc
member=dlmalloc/src/malloc.c
sha256=22c1995baed5659a0002cb396d6d83e678c92199e893a02d916cadc142d3ada2
target="$cache/dlmalloc/malloc.c"

is_right() { [ -f "$1" ] && printf '%s  %s\n' "$sha256" "$1" | sha256sum --check --status; }

is_right "$target" && exit 0
command -v apt-get >/dev/null || die "apt-get is needed to fetch $package; or put dlmalloc at $target"

mkdir -p "$cache/dlmalloc"
work=$(mktemp -d "$cache/dlmalloc/fetch.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work"/{sources,lists/partial,archives/partial,download}
chmod -R a+rX "$work"

# The machine's sources of its own release, asked for source packages in place of binary ones.
codename=$(. /etc/os-release && printf %s "${VERSION_CODENAME:?}")
cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
    grep -E "^deb .*\b$codename" | sed 's/^deb /deb-src /' >"$work/sources/machine.list" || true
# In the other form an entry is a paragraph of fields.
cat /etc/apt/sources.list.d/*.sources 2>/dev/null |
    awk -v RS= -v ORS='\n\n' -v codename="$codename" '
        $0 ~ "Suites:[^\n]*" codename { gsub(/(^|\n)Types:[^\n]*/, "\nTypes: deb-src"); print }' |
    sed '/^#/d' >"$work/sources/machine.sources" || true

apt=(apt-get -qq -o "Dir::Etc::sourcelist=/dev/null" -o "Dir::Etc::sourceparts=$work/sources"
    -o "Dir::State::Lists=$work/lists" -o "Dir::Cache=$work/archives"
    -o "APT::Sandbox::User=$(id -un)")

say "fetching dlmalloc"
"${apt[@]}" update >"$work/log" 2>&1 || true # one dead source doesn't matter if another has it
(cd "$work/download" && "${apt[@]}" source --download-only "$package" >>"$work/log" 2>&1) ||
    { cat "$work/log" >&2; die "$package can't be downloaded"; }

archive=$(ls "$work/download/${package}_"*.orig.tar.* | grep -v '\.asc$' | head -n 1)
tar --extract --to-stdout --file "$archive" --wildcards "*/$member" >"$work/malloc.c"
is_right "$work/malloc.c" || die "$member of $package isn't the file that was expected"
mv "$work/malloc.c" "$target"
