#!/usr/bin/env bash
# Installs missing packages, builds, and opens the workbench.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

if [[ ${1-} == --help || ${1-} == -h ]]; then
    cat <<'END'
usage: ./run.sh [ARGUMENT...]

Installs missing packages (Debian 12; as root or through sudo), builds the release and opens the workbench with the
simulated programmer (--programmer LIBRARY selects another).
Without a display it runs `tamrix tour` instead, which shows on the terminal what tamrix does.
The program gets the arguments. Afterwards the programs are in build/release/bin.
END
    exit
fi

need "${build_packages[@]}"
build release tamrix_workbench tamrix_plugin tamrix_sim_programmer tamrix_cli
if [[ ${DISPLAY-}${WAYLAND_DISPLAY-} ]]; then
    exec "$root/build/release/bin/tamrix-workbench" "$@"
else
    exec "$root/build/release/bin/tamrix" tour "$@"
fi
