#!/usr/bin/env bash
# Installs what is missing, builds, and runs the host program on the shipped survey job, or on FILE.
#   ./scripts/demo.sh [FILE]
set -euo pipefail
. "$(dirname "$0")/common.sh" && cd - >/dev/null

file=${1:-$root/examples/survey_road/sample/site.csv}
[ -e "$file" ] || die "$file: no such file"
file=$(realpath "$file")
cd "$root"
install_linux_packages
fetch_sources
build_preset linux survey_road
printf '\n'
exec build/linux/bin/survey_road "$file"
