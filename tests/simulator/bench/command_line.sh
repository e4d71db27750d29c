#!/usr/bin/env bash
# Exit codes and messages of the bench's command line.
#   command_line.sh WINE_RUN ARCH BENCH NETWORK INTERFACE
set -u
run() { "$wineRun" "$arch" "$bench" --class Quorvex.Device "$@" >"$work/out" 2>"$work/err"; }
wineRun=$1 arch=$2 bench=$3 network=$4 example=$5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# check NAME CODE FILE PATTERN ARGS...: the exit code, and a line that the file must hold (an empty
# pattern: none in particular).
check() {
    local name=$1 code=$2 file=$3 pattern=$4
    shift 4
    run "$@"
    local got=$?
    if [ "$got" -ne "$code" ] ||
        { [ -n "$pattern" ] && ! grep -q -- "$pattern" "$work/$file"; }; then
        echo "FAILED $name: exit code $got instead of $code, or no \"$pattern\" in:"
        cat "$work/out" "$work/err"
        failed=1
    fi
}

check "no command" 2 err "a command is missing"
check "unknown command" 2 err '"dance" is no command' dance
check "unknown option" 2 err "is no option" --dance list
check "too few words" 2 err "usage: info DEVICE" info
check "option without value" 2 err "needs a value" --network
check "empty command" 2 err "a command is missing" list -- -- list
check "missing network" 1 err "80040304" --network "$work/none.json" list
check "broken network" 1 err "80040304" --network "$0" list
check "missing script" 1 err "cannot be read" run "$work/none.bench"
check "several commands" 0 out "^two$" --network "$network" echo one -- echo two
check "unknown device" 1 err 'no device "Attic"' --network "$network" info Attic
check "leftover answer" 1 err "no message box asked for" --network "$network" answer yes
check "put of an output" 1 err "failed: 80040303" --network "$network" set Left nv nvoSpaceTemp 20

printf '# comment\n\nset Left nv nviSetpoint 20\nexpect value Left nv nviSetpoint 21\n' >"$work/a.bench"
check "failed expectation" 1 err 'a.bench:4: expected Left nviSetpoint to be "21"' \
    --network "$network" run "$work/a.bench"
printf 'echo "open\n' >"$work/b.bench"
check "unreadable line" 1 err "b.bench:1: a quotation mark is not closed" \
    --network "$network" run "$work/b.bench"
printf 'run %s\n' "$work/a.bench" >"$work/c.bench"
check "script in a script" 1 err "c.bench:1: .*a.bench:4: expected" \
    --network "$network" run "$work/c.bench"
printf 'run %s\n' "$work/d.bench" >"$work/d.bench"
check "endless scripts" 1 err "too deep" --network "$network" run "$work/d.bench"

cp "$network" "$work/saved.json"
check "nothing saved unasked" 0 out "" --network "$work/saved.json" set Left nv nviSetpoint 25.5
check "still the old value" 0 out "^21.00$" --network "$work/saved.json" \
    get Left nv nviSetpoint value
check "saved" 0 out "" --network "$work/saved.json" --save set Left nv nviSetpoint 25.5
check "saved value" 0 out "^25.50$" --network "$work/saved.json" get Left nv nviSetpoint value
check "not saved after a failure" 1 err "nowhere" --network "$work/saved.json" --save \
    set Left nv nviSetpoint 5 -- set Left nv nowhere 5
check "value kept" 0 out "^25.50$" --network "$work/saved.json" get Left nv nviSetpoint value

import="$work/made.json"
check "imported interface" 0 out "Imported 8 network variables" --network "$network" \
    import "$example" "$import" 0000000000D1
check "import asks no host" 0 out "Imported 8" --network "$work/none.json" import "$example" "$import" 0000000000D1
check "network of it" 0 out "0000000000D1.*thermostat.*9FFFFF0600050401" --network "$import" list
check "initial value" 0 out "^60.0$" --network "$import" get 0000000000D1 nv nciSndHrtBt value
check "text of the maker" 0 out "^Hall$" --network "$import" get thermostat nv nciLocation value
head -14 "$example" | sed '$s/.*/VAR lone/' >"$work/short.xif"
check "damaged interface" 1 err "short.xif.* line 14: a variable needs a name and an index" \
    --network "$network" import "$work/short.xif"
check "no interface" 1 err "line 1: this is no device interface file" --network "$network" \
    import "$network" "$work/none.json"

exit $failed
