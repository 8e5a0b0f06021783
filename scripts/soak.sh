#!/usr/bin/env bash
# Drives the editor through random editing for MINUTES minutes (default 1)
# under AddressSanitizer and UndefinedBehaviorSanitizer, in build-asan/ as
# "./test.sh --sanitize" builds it, and prints how many steps ran. The seed
# is SOAK_SEED, or else new for every run; a failure prints it with a short
# sequence of steps that still fails, written to build-asan/soak-failure-SEED.txt
# (replay it with build-asan/soak/plotwell-soak --replay FILE).
set -euo pipefail
cd "$(dirname "$0")/.."
minutes="${1:-1}"
source scripts/build.sh --sanitize
seed="${SOAK_SEED:-$(date +%s)}"
exec "$build/soak/plotwell-soak" --seed "$seed" --seconds "$((minutes * 60))" --out "$build"
