#!/usr/bin/env bash
# Installs what is missing, builds, and opens the workbench.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

if [[ ${1-} == --help || ${1-} == -h ]]; then
    cat <<'END'
usage: ./run.sh [ARGUMENT...]

Installs the packages that are missing (Debian 12; as root or through sudo), builds the release and opens the workbench,
with the simulated programmer attached (--programmer LIBRARY takes another).
Without a display it runs `tamrix tour` instead: a run through what the program does, told on the terminal.
The arguments are handed on. The programs stand in build/release/bin afterwards.
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
