# Sourced by test.sh: displays for tests of real windows. Each has its own keyboard and mouse, so tests run on several at a time.

# start_displays COUNT: leaves them in TAMRIX_DISPLAYS until the shell ends; tests/ui/on_free_display.sh picks one.
start_displays() {
    local count=$1 number
    export TAMRIX_DISPLAYS='' TAMRIX_DISPLAY_LOCKS
    TAMRIX_DISPLAY_LOCKS=$(mktemp -d)
    display_servers=()
    trap stop_displays EXIT
    while ((count-- > 0)); do
        exec {ready}< <(exec Xvfb -displayfd 1 -screen 0 1600x1200x24 -noreset -nolisten tcp 2>/dev/null)
        display_servers+=($!)
        read -r number <&"$ready" || { say 'Xvfb does not start' && return 1; }
        TAMRIX_DISPLAYS+=" :$number"
    done
}

stop_displays() {
    kill "${display_servers[@]}" 2>/dev/null || true
    rm -rf "$TAMRIX_DISPLAY_LOCKS"
}
