#!/usr/bin/env bash
# Runs a built benchmark under Wine with the program and its wineserver pinned to CPU 0.
# Builds nothing. Usage: bench/run.sh build/bin/dispatch_bench.exe [ARGS...]
set -euo pipefail

if [ $# -lt 1 ]; then
    echo "usage: bench/run.sh PROGRAM.exe [ARGS...]" >&2
    exit 2
fi

root=$(cd "$(dirname "$0")/.." && pwd)
program_dir=$(cd "$(dirname "$1")" && pwd)
# The prefix that tools/wine-run.sh picks for the program (build/bin -> build/wineprefix).
export WINEPREFIX="${VMGUI_WINEPREFIX:-$(dirname "$program_dir")/wineprefix}"
export VMGUI_WINEPREFIX="$WINEPREFIX"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEARCH=win64

# A prefix that was never booted is prepared by one unmeasured run of the wrapper; the server
# that the preparation leaves behind is stopped, so that the next one starts pinned.
if [ ! -e "$WINEPREFIX/.vmgui-ready" ]; then
    "$root/tools/wine-run.sh" cmd /c exit </dev/null >/dev/null 2>&1 || true
    wineserver -k </dev/null >/dev/null 2>&1 || true
    wineserver -w </dev/null >/dev/null 2>&1 || true
fi

# Every message that the program sends goes through the server now and then: the server runs
# on the program's CPU. Started here, before the wrapper would start one of its own (its
# start is then a no-op); it outlives the program by a minute, as the wrapper's would.
setsid taskset -c 0 wineserver -p60 </dev/null >/dev/null 2>&1 || true

# A server of this prefix that was running already (from the tests, say) is pinned too. It
# is recognised by its working directory, which Wine names after the prefix's device and
# inode.
server_dir=$(printf 'server-%x-%x' "$(stat -c %d "$WINEPREFIX")" "$(stat -c %i "$WINEPREFIX")")
for proc in /proc/[0-9]*; do
    if [[ "$(readlink "$proc/cwd" 2>/dev/null)" == */"$server_dir" ]]; then
        taskset -pc 0 "${proc#/proc/}" >/dev/null 2>&1 || true
    fi
done

exec taskset -c 0 "$root/tools/wine-run.sh" "$@"
