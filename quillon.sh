#!/usr/bin/env bash
# Installs what is missing, builds, and starts Quillon on the sample suite.
# Arguments pass through to the program.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/setup.sh
quillon_install_packages
quillon_build
exec build/TERVA48/TOOLS/Quillon/quillon "$@"
