#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test through ctest.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=ON >/dev/null
cmake --build build
ctest --test-dir build --output-on-failure -j2 "$@"
