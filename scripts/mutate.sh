#!/usr/bin/env bash
# Changes the sources one operator or constant at a time and lists the changes that no test notices.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need "${build_packages[@]}" "${test_packages[@]}" "${mutation_packages[@]}"
cd "$root"
exec python3 scripts/mutate.py "$@"
