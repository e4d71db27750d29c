#!/usr/bin/env bash
# Runs a Windows program under Wine, in a prefix of its own for each bitness and setting, with no display.
#
#   scripts/wine-run.sh i686|x86_64 start | stop | prefix | PROGRAM ARGS...
#
# start prepares the prefix and keeps its server and its desktop running, stop ends that, prefix prints the
# folder.
#
#   QUILLON_WINE_BASE  names the prefixes (default ~/.cache/quillon/wine)
#   QUILLON_DISPLAY    windows are shown on this X display
#   QUILLON_DECIMAL    the decimal separator of the regional settings: "." or ","
#   QUILLON_THEME      1: windows have the theme's looks without a display too, which nobody sees and which
#                      doubles the time that they take
#   QUILLON_DPI        the display's scaling: 96 is 100 %, 192 is 200 %
here=$(cd "$(dirname "$0")" && pwd)
arch=$1
shift
# The program and Wine's server wake each other for nearly every call, which takes several times as long
# from one processor to another. Each bitness has one: the first or the last of those that may be used, and
# the other way round for what has a screen, which runs beside the rest.
processors=$(sed -n 's/^Cpus_allowed_list:[[:space:]]*//p' /proc/self/status)
case "$arch${QUILLON_DISPLAY:+ with a screen}" in
    i686 | "x86_64 with a screen") processor=${processors%%[,-]*} ;;
    *) processor=${processors##*[,-]} ;;
esac
taskset -pc "$processor" $$ >/dev/null 2>&1

base=${QUILLON_WINE_BASE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillon/wine}
export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=mscoree,mshtml= LC_ALL=${LC_ALL:-C.UTF-8}
if [ -n "${QUILLON_DISPLAY:-}" ]; then export DISPLAY=$QUILLON_DISPLAY; base=$base-x; else unset DISPLAY; fi
case "${QUILLON_DECIMAL:-}" in
    "") ;;
    .) base=$base-point ;;
    ,) base=$base-comma ;;
    *) echo "wine-run: QUILLON_DECIMAL is \".\" or \",\"" >&2; exit 2 ;;
esac
[ -z "${QUILLON_DPI:-}" ] || base=$base-$QUILLON_DPI
case "${QUILLON_THEME:-}" in
    "") ;;
    1) base=$base-theme ;;
    *) echo "wine-run: QUILLON_THEME is 1 or not set" >&2; exit 2 ;;
esac
if [ "$arch" = i686 ]; then
    export WINEPREFIX=$base-32 WINEARCH=win32
    loader=/usr/lib/wine/wine
else
    export WINEPREFIX=$base-64 WINEARCH=win64
    loader=/usr/lib/wine/wine64
fi
export WINELOADER=$loader

put() { "$loader" reg add "$@" /f; }

settings() {
    { [ -n "${QUILLON_DISPLAY:-}" ] || put 'HKCU\Software\Wine\Drivers' /v Graphics /d null; } &&
        { [ -n "${QUILLON_DISPLAY:-}${QUILLON_THEME:-}" ] ||
            put 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' /v ThemeActive /d 0; } &&
        { [ -z "${QUILLON_DECIMAL:-}" ] ||
            put 'HKCU\Control Panel\International' /v sDecimal /d "$QUILLON_DECIMAL"; } &&
        { [ -z "${QUILLON_DPI:-}" ] ||
            put 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$QUILLON_DPI"; }
}

# The prefix, unless it is there.
prepare() {
    [ ! -f "$WINEPREFIX/.ready" ] || return 0
    rm -rf "$WINEPREFIX"
    "$loader" wineboot -i
    settings || return 1
    wineserver -k
    wineserver -w
    touch "$WINEPREFIX/.ready"
}

# A program that waits for a word which nobody says. Wine's server, which comes with it, has descriptor 8 from
# it as long as it runs.
hold() {
    local word=$WINEPREFIX.word
    [ -p "$word" ] || mkfifo "$word"
    "$loader" 'C:\windows\system32\cmd.exe' /c 'set /p word=' <>"$word" &
}

# Runs a command while no other script has the prefix.
alone() {
    mkdir -p "$(dirname "$WINEPREFIX")"
    (flock 9; "$@" 9>&-) 9>"$WINEPREFIX.lock"
}

# Wine's desktop, on which windows stand, comes with the first program and goes with the last. Now and then
# it comes without a display, and no program that finds it has a window: so one is tried, and the desktop
# that is good is kept until the end.
keep_desktop() {
    exec 8>"$WINEPREFIX.desktop"
    flock -n 8 || return 0 # it is kept already
    for _ in 1 2 3; do
        prepare 8>&- || continue
        hold
        timeout 300 "$loader" cscript //nologo "Z:${here//\//\\}\\window.vbs" 8>&- && return 0
        wineserver -k
        wineserver -w
    done
    return 1
}

fail() { echo "wine-run: no windows under Wine in $WINEPREFIX" >&2; exit 1; }

# Wine's services inherit standard output; a pipe they hold would never end, so they get none.
case "$1" in
    start) (alone keep_desktop) </dev/null >/dev/null 2>&1 || fail; exit 0 ;;
    stop) wineserver -k </dev/null >/dev/null 2>&1; exit 0 ;;
    prefix) printf '%s\n' "$WINEPREFIX"; exit 0 ;;
esac
[ -f "$WINEPREFIX/.ready" ] || alone prepare </dev/null >/dev/null 2>&1 || fail
exec "$loader" "$@"
