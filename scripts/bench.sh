#!/usr/bin/env bash
# Builds release, runs each benchmark beside its peers in one process run and prints the ratios.
set -euo pipefail
. "$(dirname "$0")/common.sh"
install_linux_packages
install_packages libbenchmark-dev libexpat1-dev python3
fetch_sources
mkdir -p build
cmake --preset linux -B build/bench -DCMAKE_BUILD_TYPE=Release -DZOR_BUILD_BENCHMARKS=ON \
    -DZOR_BUILD_TESTS=OFF >build/bench.log || { cat build/bench.log; exit 1; }
cmake --build build/bench
reports=()
for program in build/bench/bin/*_benchmark; do
    report="build/bench/$(basename "$program").json"
    "$program" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
        --benchmark_min_time=0.2 --benchmark_out_format=json --benchmark_out="$report" >/dev/null
    reports+=("$report")
done
python3 scripts/bench_table.py "${reports[@]}"
