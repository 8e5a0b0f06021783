#!/usr/bin/env bash
# Sourced by ./test.sh and scripts/soak.sh: installs what is missing and builds
# everything in build/ (Release), or with --sanitize in build-asan/ under
# AddressSanitizer and UndefinedBehaviorSanitizer, where any report ends the
# program, or with --sanitize=thread in build-tsan/ under ThreadSanitizer (only
# the test programs that run more than one thread, listed in $tsan_targets).
# Leaves the folder in $build and, with a sanitizer, exports its options for
# what runs next.
build=build
type=Release
options=()
targets=()
tsan_targets=(tests_render tests_editor tests_platform)
if [ "${1:-}" = --sanitize=thread ]; then
  build=build-tsan
  type=RelWithDebInfo
  options=(-DPLOTWELL_TSAN=ON)
  targets=(--target "${tsan_targets[@]}")
  export TSAN_OPTIONS="halt_on_error=1:second_deadlock_stack=1:suppressions=$PWD/scripts/tsan.supp"
elif [ "${1:-}" = --sanitize ]; then
  build=build-asan
  type=RelWithDebInfo
  options=(-DPLOTWELL_SANITIZE=ON)
  export ASAN_OPTIONS="halt_on_error=1:abort_on_error=1:detect_leaks=1:detect_stack_use_after_return=1"
  export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
fi
./scripts/install-deps.sh
# PLOTWELL_WERROR=ON (as CI sets it) makes every compiler warning an error.
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="$type" -DBUILD_TESTING=ON \
  -DPLOTWELL_WERROR="${PLOTWELL_WERROR:-OFF}" "${options[@]}" >/dev/null
cmake --build "$build" "${targets[@]}"
