#!/usr/bin/env bash
# Runs a command on an X screen of its own with a window manager, and ends both afterwards.
#
#   scripts/with-screen.sh [--size WIDTHxHEIGHT] COMMAND ARGS...
#
# The command sees the screen as DISPLAY and QUILLON_DISPLAY. Exit code: the command's; 1 when there
# is no screen to be had.
set -u
size=1280x1024
if [ "${1:-}" = --size ]; then
    size=$2
    shift 2
fi
[ $# -gt 0 ] || { echo "usage: scripts/with-screen.sh [--size WIDTHxHEIGHT] COMMAND ARGS..." >&2; exit 2; }

fail() { echo "with-screen: $*" >&2; exit 1; }
for tool in Xvfb openbox xdotool; do
    command -v $tool >/dev/null || fail "$tool is missing (scripts/setup.sh installs it)"
done

work=$(mktemp -d)
children=()
leave() {
    trap - EXIT
    for child in "${children[@]}"; do kill "$child" 2>/dev/null; done
    wait 2>/dev/null
    rm -rf "$work"
}
trap leave EXIT
trap 'exit 1' INT TERM HUP

# Until a condition holds: up to a minute, for a busy machine starts slowly.
until_true() {
    local end=$((SECONDS + 60))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $end ] || return 1
        sleep 0.1
    done
}

Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
children+=($!)
until_true test -s "$work/display" || fail "Xvfb does not start"
DISPLAY=:$(tr -d '[:space:]' <"$work/display")
export DISPLAY QUILLON_DISPLAY=$DISPLAY
XDG_CONFIG_HOME=$work openbox >/dev/null 2>&1 &
children+=($!)
# The window manager names itself on the root window when it is at work.
until_true sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 0x' || fail "openbox does not start"
"$@" &
command=$!
children+=($command)
wait $command
