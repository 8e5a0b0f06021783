#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test through ctest.
# "./test.sh --sanitize" does the same in build-asan/ under AddressSanitizer and
# UndefinedBehaviorSanitizer, where any report fails the test that made it.
# "./test.sh --sanitize=thread" builds in build-tsan/ under ThreadSanitizer and
# runs the tests whose code runs on more than one thread: the band painter's
# frames and pictures, the recovery writer and the game-log follower.
# Other arguments go to ctest.
set -euo pipefail
cd "$(dirname "$0")"
sanitize=()
if [ "${1:-}" = --sanitize ] || [ "${1:-}" = --sanitize=thread ]; then
  sanitize=("$1")
  shift
fi
source scripts/build.sh "${sanitize[@]}"
if [ "${sanitize[*]}" = --sanitize=thread ]; then
  threaded='^(MapPicture|Ratios/MapPictureAt|Picture|MapRenderer|ExportPicture|Underlay|Recovery|MapPack|FollowGameLog|FileTail)\.'
  # Only the programs built under ThreadSanitizer have their tests listed.
  ctest --test-dir "$build" --output-on-failure -j2 -R "$threaded" "$@"
  exit
fi
ctest --test-dir "$build" --output-on-failure -j2 "$@"
