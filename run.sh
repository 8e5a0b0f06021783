#!/usr/bin/env bash
# Installs what is missing, builds Plotwell in Release and starts it.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF >/dev/null
cmake --build build --target plotwell
exec ./build/plotwell "$@"
