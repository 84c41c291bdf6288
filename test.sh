#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test headless.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/setup.sh
quillon_install_packages
quillon_build
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j"$(nproc 2>/dev/null || echo 2)"
