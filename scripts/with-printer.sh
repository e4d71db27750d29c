#!/usr/bin/env bash
# Runs a program under Wine while a printer (printer.py) is attached to one of its serial ports.
#
#   scripts/with-printer.sh i686|x86_64 [--rate BYTES_A_SECOND] PROGRAM ARGS...
#
# The program finds the port's number in QUILLON_TEST_PORT and the printer's folder, as a Windows path, in
# QUILLON_TEST_PRINTER, and in place of an argument @PORT@; QUILLON_PRINTER_FOLDER, when set, names that folder
# and keeps it afterwards.
set -u
here=$(cd "$(dirname "$0")" && pwd)
arch=$1
shift
rate=()
if [ "${1:-}" = --rate ]; then rate=(--rate "$2"); shift 2; fi

fail() { echo "with-printer: $*" >&2; exit 1; }

folder=${QUILLON_PRINTER_FOLDER:-$(mktemp -d)}
mkdir -p "$folder"
rm -f "$folder/ready"
"$here/wine-run.sh" "$arch" start
devices=$("$here/wine-run.sh" "$arch" prefix)/dosdevices
[ -d "$devices" ] || fail "no Wine prefix"
# Several runs may share a prefix; each takes a port that no other has.
for number in $(seq 20 99); do
    ln -s "$folder/port" "$devices/com$number" 2>/dev/null && break
done
port=$devices/com$number
[ "$(readlink "$port")" = "$folder/port" ] || fail "no serial port is free"

# The printer ends when this script does: its standard input is a pipe that nobody else holds.
exec 8> >(exec "$here/printer.py" "$folder" "${rate[@]}")
printer=$!
leave() {
    rm -f "$port"
    exec 8>&-
    wait "$printer"
    [ -n "${QUILLON_PRINTER_FOLDER:-}" ] || rm -rf "$folder"
}
trap leave EXIT
for ((wait = 0; wait < 300; ++wait)); do
    [ -e "$folder/ready" ] && break
    sleep 0.1
done
[ -e "$folder/ready" ] || fail "the printer did not start"

arguments=()
for argument in "$@"; do
    [ "$argument" = @PORT@ ] && argument=$number
    arguments+=("$argument")
done
QUILLON_TEST_PORT=$number QUILLON_TEST_PRINTER="Z:${folder//\//\\}" \
    "$here/wine-run.sh" "$arch" "${arguments[@]}" 8>&-
