#!/usr/bin/env bash
# Style, layers and exports: what a reviewer should not have to look for.
set -euo pipefail
. "$(dirname "$0")/common.sh"
install_check_packages

say "formatting"
git ls-files '*.h' '*.cpp' '*.c' | xargs clang-format --dry-run --Werror
say "a second compiler"
install_linux_packages
fetch_sources
build_preset linux-clang
say "layers"
python3 scripts/check_layers.py
say "translations"
build_preset linux xlate_check
python3 scripts/list_texts.py build/survey_road.keys.txt
build/linux/bin/xlate_check --against build/survey_road.keys.txt examples/survey_road/lang/*.txt
say "exports"
python3 scripts/check_exports.py
say "scripts"
for script in scripts/*.sh .ci/run; do bash -n "$script"; done
echo "checks: clean"
