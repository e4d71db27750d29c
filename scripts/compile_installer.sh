#!/usr/bin/env bash
# Compiles packaging/quillon.nsi: compile_installer.sh VERSION STAGE OUTPUT [-DQUICK]
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
makensis -V2 -WX ${4:-} -DVERSION="$1" -DSOURCE="$root" -DSTAGE="$(realpath "$2")" -DOUTPUT="$(realpath -m "$3")" \
    "$root/packaging/quillon.nsi"
printf '%s  %s bytes\n' "$3" "$(stat -c %s "$3")"
