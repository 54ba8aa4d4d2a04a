# scripts/common.sh: what the commands share. Sourced, not run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache="$root/.cache"
cd "$root"

say() { printf '\n== %s\n' "$*"; }
die() { printf 'error: %s\n' "$*" >&2; exit 1; }

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# Installs the Debian packages that are missing; a second run finds them all and does nothing.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    command -v apt-get >/dev/null || die "apt-get is needed to install: ${missing[*]}"
    say "installing ${missing[*]}"
    as_root apt-get update -qq
    DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

install_linux_packages() {
    # binutils for Windows makes the compiled resource files that the port reads.
    install_packages ca-certificates cmake ninja-build g++ ccache libicu-dev libgtest-dev dpkg-dev tzdata \
        libboost-filesystem1.74-dev libboost-thread1.74-dev \
        binutils-mingw-w64-x86-64 mingw-w64-tools
}

install_windows_packages() {
    install_linux_packages
    # clang compiles the frames that catch faults.
    install_packages g++-mingw-w64-x86-64-posix clang googletest wine wine64 xvfb xauth
}

install_check_packages() {
    install_packages clang clang-format clang-tidy libclang-rt-14-dev locales python3
}

# A locale with a decimal comma, for the tests that depend on one.
install_comma_locale() {
    install_packages locales
    locale -a | grep -qi '^de_DE\.utf-\?8$' && return
    say "generating the locale de_DE.UTF-8"
    as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8
}

# download_source PACKAGE WORK: the files of a Debian source package, into WORK/download.
#
# Asks the machine's own Debian mirrors, read from apt's configuration. All that apt writes goes to
# WORK: the system's lists, cache and configuration stay as they are, and no rights are needed.
download_source() {
    local package=$1 work=$2 codename apt
    command -v apt-get >/dev/null || die "apt-get is needed to fetch the sources of $package"
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
    say "fetching the sources of $package"
    "${apt[@]}" update >"$work/log" 2>&1 || true # one dead source doesn't matter if another has it
    (cd "$work/download" && "${apt[@]}" source --download-only "$package" >>"$work/log" 2>&1) ||
        { cat "$work/log" >&2; die "$package can't be downloaded"; }
}

fetch_sources() {
    ./scripts/fetch_dlmalloc.sh
}

# Boost for the Windows build.
fetch_windows_sources() {
    ./scripts/fetch_boost.sh
}

# Builds one preset, configuring it if needed; further arguments are targets.
build_preset() {
    local preset=$1
    shift
    local targets=()
    [ $# -gt 0 ] && targets=(--target "$@")
    mkdir -p build
    cmake --preset "$preset" >"build/$preset.log" 2>&1 ||
        { cat "build/$preset.log"; die "configuring $preset failed"; }
    cmake --build "build/$preset" "${targets[@]}"
}

# A small disk for the tests that fill one up; without the rights to make it they are skipped.
mount_small_disk() {
    small_disk="$cache/small_disk"
    mkdir -p "$small_disk"
    if mountpoint -q "$small_disk" || as_root mount -t tmpfs -o size=2m,mode=777 tmpfs "$small_disk" 2>/dev/null; then
        export ZOR_TEST_SMALL_DISK="$small_disk"
    else
        say "no small disk can be mounted: tests of a full one are skipped"
    fi
}

unmount_small_disk() {
    [ -n "${small_disk:-}" ] && as_root umount "$small_disk" 2>/dev/null || true
}

# Wine with a display of its own: a server that starts without one has no windows for its life.
start_wine() {
    export WINEDEBUG=-all WINEPREFIX="${WINEPREFIX:-$cache/wine}"
    # The programs are 64-bit: the plain loader does not ask for a 32-bit installation.
    wine=/usr/lib/wine/wine64
    [ -x "$wine" ] || die "wine64 is missing"
    if [ -z "${DISPLAY:-}" ]; then
        mkdir -p "$cache"
        Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$cache/display" \
            >/dev/null 2>&1 &
        xvfb_pid=$!
        for _ in $(seq 100); do
            [ -s "$cache/display" ] && break
            sleep 0.1
        done
        [ -s "$cache/display" ] || die "Xvfb did not start"
        DISPLAY=":$(cat "$cache/display")"
        export DISPLAY
    fi
    if [ ! -e "$WINEPREFIX/system.reg" ]; then
        mkdir -p "$WINEPREFIX"
        "$wine" wineboot -i >/dev/null 2>&1 || true
        # A test that crashes ends; no debugger waits for an answer.
        "$wine" reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' \
            /v Auto /t REG_SZ /d 0 /f >/dev/null 2>&1 || true
    fi
}

stop_wine() {
    [ -n "${wine:-}" ] && /usr/lib/wine/wineserver64 -k >/dev/null 2>&1 || true
    [ -n "${xvfb_pid:-}" ] && kill "$xvfb_pid" 2>/dev/null || true
}
