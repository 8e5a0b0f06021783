#!/usr/bin/env bash
# Builds the map reader's fuzz target with clang (libFuzzer, AddressSanitizer,
# UndefinedBehaviorSanitizer) in build-fuzz/ and runs it on one core for
# SECONDS seconds (default 60), starting from the seed files in fuzz/corpus/.
# New inputs it finds go to build-fuzz/corpus/; an input that fails is saved in
# build-fuzz/crashes/ and the script exits with a non-zero status.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
./scripts/install-deps.sh fuzz
cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DPLOTWELL_FUZZ=ON -DBUILD_TESTING=OFF -DPLOTWELL_WERROR="${PLOTWELL_WERROR:-OFF}" >/dev/null
cmake --build build-fuzz --target plotwell-fuzz-reader
mkdir -p build-fuzz/corpus build-fuzz/crashes
export ASAN_OPTIONS="halt_on_error=1:abort_on_error=1:detect_leaks=1"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
build-fuzz/fuzz/plotwell-fuzz-reader build-fuzz/corpus fuzz/corpus \
  -dict=fuzz/map.dict -max_total_time="$seconds" -timeout=10 -max_len=4096 \
  -artifact_prefix=build-fuzz/crashes/ -print_final_stats=1
