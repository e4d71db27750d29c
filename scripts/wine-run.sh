#!/usr/bin/env bash
# Runs a Windows program under Wine, in a prefix of its own for each bitness, with no display.
#
#   scripts/wine-run.sh i686|x86_64 start | stop | PROGRAM ARGS...
#
# QUILLON_WINE_BASE names the prefixes (default ~/.cache/quillon/wine); with QUILLON_DISPLAY set, the
# prefix for windows under that X display is used instead of the one without graphics.
arch=$1
shift
base=${QUILLON_WINE_BASE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillon/wine}
export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=mscoree,mshtml= LC_ALL=${LC_ALL:-C.UTF-8}
if [ -n "${QUILLON_DISPLAY:-}" ]; then export DISPLAY=$QUILLON_DISPLAY; base=$base-x; else unset DISPLAY; fi
if [ "$arch" = i686 ]; then
    export WINEPREFIX=$base-32 WINEARCH=win32
    loader=/usr/lib/wine/wine
else
    export WINEPREFIX=$base-64 WINEARCH=win64
    loader=/usr/lib/wine/wine64
fi
export WINELOADER=$loader

start() {
    mkdir -p "$(dirname "$WINEPREFIX")"
    exec 9>"$WINEPREFIX.lock"
    flock 9
    if [ ! -f "$WINEPREFIX/.ready" ]; then
        rm -rf "$WINEPREFIX"
        "$loader" wineboot -i 9>&-
        [ -n "${QUILLON_DISPLAY:-}" ] ||
            "$loader" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f 9>&-
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
esac
[ -f "$WINEPREFIX/.ready" ] || (start) </dev/null >/dev/null 2>&1
exec "$loader" "$@"
