#!/usr/bin/env bash
# Runs a Windows program under Wine, in a prefix of its own for each bitness and setting, with no display.
#
#   scripts/wine-run.sh i686|x86_64 start | stop | prefix | PROGRAM ARGS...
#
# start prepares the prefix and keeps its server running, stop ends that, prefix prints the folder.
#
#   QUILLON_WINE_BASE  names the prefixes (default ~/.cache/quillon/wine)
#   QUILLON_DISPLAY    windows are shown on this X display
#   QUILLON_DECIMAL    the decimal separator of the regional settings: "." or ","
#   QUILLON_THEME      1: windows have the theme's looks without a display too, which nobody sees and which
#                      doubles the time that they take
#   QUILLON_DPI        the display's scaling: 96 is 100 %, 192 is 200 %
arch=$1
shift
# The program and Wine's server wake each other for nearly every call, which takes several times as long
# from one processor to another. Each bitness has one: the first or the last of those that may be used.
processors=$(sed -n 's/^Cpus_allowed_list:[[:space:]]*//p' /proc/self/status)
if [ "$arch" = i686 ]; then processor=${processors%%[,-]*}; else processor=${processors##*[,-]}; fi
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

put() { "$loader" reg add "$@" /f 9>&-; }

settings() {
    [ -n "${QUILLON_DISPLAY:-}" ] || put 'HKCU\Software\Wine\Drivers' /v Graphics /d null
    [ -n "${QUILLON_DISPLAY:-}${QUILLON_THEME:-}" ] ||
        put 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' /v ThemeActive /d 0
    [ -z "${QUILLON_DECIMAL:-}" ] ||
        put 'HKCU\Control Panel\International' /v sDecimal /d "$QUILLON_DECIMAL"
    [ -z "${QUILLON_DPI:-}" ] ||
        put 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$QUILLON_DPI"
}

start() {
    mkdir -p "$(dirname "$WINEPREFIX")"
    exec 9>"$WINEPREFIX.lock"
    flock 9
    if [ ! -f "$WINEPREFIX/.ready" ]; then
        rm -rf "$WINEPREFIX"
        "$loader" wineboot -i 9>&-
        settings
        wineserver -k 9>&-
        wineserver -w 9>&-
        touch "$WINEPREFIX/.ready"
    fi
    wineserver -p 9>&-
    "$loader" cmd /c exit 9>&-
    exec 9>&-
}

# Wine's services inherit standard output; a pipe they hold would never end, so they get none.
case "$1" in
    start) start </dev/null >/dev/null 2>&1; exit 0 ;;
    stop) wineserver -k </dev/null >/dev/null 2>&1; exit 0 ;;
    prefix) printf '%s\n' "$WINEPREFIX"; exit 0 ;;
esac
[ -f "$WINEPREFIX/.ready" ] || (start) </dev/null >/dev/null 2>&1
exec "$loader" "$@"
