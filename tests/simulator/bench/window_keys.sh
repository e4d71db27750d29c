#!/usr/bin/env bash
# The bench's window under the keyboard alone, on the screen that QUILLON_DISPLAY names (with-screen.sh). What
# was done in it must stand in the network file that is saved when it closes.
#   window_keys.sh WINE_RUN ARCH BENCH HOST_DLL NETWORK
set -u
wineRun=$1 arch=$2 bench=$3 host=$4 network=$5
work=$(mktemp -d)
leave() {
    "$wineRun" "$arch" stop
    rm -rf "$work"
}
trap leave EXIT
fail() { echo "FAILED: $*"; cat "$work/out"; exit 1; }

touch "$work/out"
# A server that is left from another screen would show its windows there.
"$wineRun" "$arch" stop
"$wineRun" "$arch" start
"$wineRun" "$arch" regsvr32 /s "$host" || fail "the host cannot be registered"

cp "$network" "$work/room.json"
"$wineRun" "$arch" "$bench" --class Quorvex.Device --save --network "$work/room.json" \
    window --for 60 >"$work/out" 2>&1 &
run=$!
for _ in $(seq 150); do
    window=$(xdotool search --onlyvisible --name "Quorvex bench") && break
    sleep 0.2
done
[ -n "${window:-}" ] || fail "no window came up"
for _ in $(seq 100); do
    [ "$(xdotool getactivewindow 2>/dev/null)" = "$window" ] && break
    xdotool windowactivate "$window" 2>/dev/null
    sleep 0.2
done
# Wine gives the keyboard to a field of it a little later, and a busy machine takes its time for each key.
sleep 2
keys() { for key in "$@"; do xdotool key "$key"; sleep 0.3; done; }

# Room 102: status, input 1, switch, and a count that stays. Room 103: the plug.
keys Down alt+s ctrl+a 4 2 alt+1 alt+h
keys alt+a ctrl+a 1 2 3 4
keys alt+m
sleep 1
keys F5 alt+d Down alt+p
# Room 101: a temperature, by Enter in its field; a wrong one is refused and leaves it.
keys alt+d Home alt+n 3 1 comma 5 Return x Return Escape
sleep 0.7
xdotool windowactivate --sync "$window"
keys alt+F4
wait "$run"
code=$?
[ $code -eq 0 ] || fail "exit code $code"

python3 - "$work/room.json" <<'CHECK' || fail "the network is not as the keys made it"
import json, sys
rooms = {room["name"]: room for room in json.load(open(sys.argv[1]))["devices"]}
image = lambda name: next(f["value"] for f in rooms[name]["files"] if f["id"] == "FFFD")
point = lambda name, of: next(p["raw"] for p in rooms[name]["nvs"] if p["name"] == of)
wrong = []
if image("Room 102")[:22] != "2A000100000000010004D2":
    wrong.append("Room 102 has the image " + image("Room 102"))
if rooms["Room 103"]["state"] != "" or rooms["Room 102"]["state"] != "04":
    wrong.append("the wrong plug is out")
if not 2600 < int(point("Room 101", "nvoSpaceTemp"), 16) < 3200:
    wrong.append("Room 101 is at " + point("Room 101", "nvoSpaceTemp"))
print("\n".join(wrong))
sys.exit(1 if wrong else 0)
CHECK
