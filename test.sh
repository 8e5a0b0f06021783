#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test through ctest.
# "./test.sh --sanitize" does the same in build-asan/ under AddressSanitizer and
# UndefinedBehaviorSanitizer, where any report fails the test that made it.
# Other arguments go to ctest.
set -euo pipefail
cd "$(dirname "$0")"
sanitize=()
if [ "${1:-}" = --sanitize ]; then
  shift
  sanitize=(--sanitize)
fi
source scripts/build.sh "${sanitize[@]}"
ctest --test-dir "$build" --output-on-failure -j2 "$@"
