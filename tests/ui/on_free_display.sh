#!/usr/bin/env bash
# Runs a test program on one of the displays in TAMRIX_DISPLAYS that no other test uses now; without any on the one that it has.
while [[ ${TAMRIX_DISPLAYS-} ]]; do
    for display in $TAMRIX_DISPLAYS; do
        exec {lock}>"$TAMRIX_DISPLAY_LOCKS/$display"
        if flock -n "$lock"; then  # held until the program and what it started have ended
            export DISPLAY=$display
            unset TAMRIX_DISPLAYS WAYLAND_DISPLAY
            break
        fi
        exec {lock}>&-
    done
    [[ ! ${TAMRIX_DISPLAYS-} ]] || sleep 0.05
done
exec "$@"
