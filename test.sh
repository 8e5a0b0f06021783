#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test through ctest.
# "./test.sh --sanitize" does the same in build-asan/ under AddressSanitizer and
# UndefinedBehaviorSanitizer, where any report fails the test that made it.
# Other arguments go to ctest.
set -euo pipefail
cd "$(dirname "$0")"
build=build
type=Release
options=()
if [ "${1:-}" = --sanitize ]; then
  shift
  build=build-asan
  type=RelWithDebInfo
  options=(-DPLOTWELL_SANITIZE=ON)
  export ASAN_OPTIONS="halt_on_error=1:abort_on_error=1:detect_leaks=1:detect_stack_use_after_return=1"
  export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
fi
./scripts/install-deps.sh
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="$type" -DBUILD_TESTING=ON "${options[@]}" >/dev/null
cmake --build "$build"
ctest --test-dir "$build" --output-on-failure -j2 "$@"
