#!/usr/bin/env bash
# Runs a Windows program under Wine in a private, headless prefix.
#
# The prefix lives beside the program's folder (build/bin -> build/wineprefix) unless
# VMGUI_WINEPREFIX names another. It is booted once with Wine's null graphics driver, so
# windows, timers and GDI work without a display. One persistent wineserver is kept for
# the run, so that each program starts quickly. Wine's background services never see the
# caller's stdout or stderr, so they cannot hold a test runner's pipes open.
#
# VMGUI_DLL_DIRS names folders (separated by colons) whose DLLs the program loads: they are
# put in front of WINEPATH, so that a test program finds DLLs that do not lie beside it.
#
# VMGUI_WINE_DISPLAY=x11 shows the windows on the X display in DISPLAY instead: the
# prefix is then build/wineprefix-x11 (unless VMGUI_WINEPREFIX names another) and keeps
# Wine's own graphics driver.
set -euo pipefail

if [ $# -lt 1 ]; then
    echo "usage: wine-run.sh PROGRAM [ARGS...]" >&2
    exit 2
fi

display="${VMGUI_WINE_DISPLAY:-null}"
case "$display" in
    null) prefix_name=wineprefix ;;
    x11) prefix_name=wineprefix-x11 ;;
    *)
        echo "wine-run.sh: VMGUI_WINE_DISPLAY must be null or x11, not '$display'" >&2
        exit 2
        ;;
esac

program_dir=$(cd "$(dirname "$1")" && pwd)
export WINEPREFIX="${VMGUI_WINEPREFIX:-$(dirname "$program_dir")/$prefix_name}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEARCH=win64
# No Mono or Gecko installer prompts, no desktop menu entries, and no debugger attached to a
# program that crashes (it would wait for ever instead of letting the program end).
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d"

# Wine's drive Z: is the root folder: /a/b is Z:\a\b.
if [ -n "${VMGUI_DLL_DIRS:-}" ]; then
    dll_path=""
    IFS=: read -r -a dll_dirs <<<"$VMGUI_DLL_DIRS"
    for dir in "${dll_dirs[@]}"; do
        [ -n "$dir" ] || continue
        dir=$(cd "$dir" && pwd)
        dll_path="${dll_path:+$dll_path;}Z:${dir//\//\\}"
    done
    export WINEPATH="$dll_path${WINEPATH:+;$WINEPATH}"
fi

mkdir -p "$WINEPREFIX"
{
    flock 9
    if [ ! -e "$WINEPREFIX/.vmgui-ready" ]; then
        wineboot -i </dev/null >/dev/null 2>&1 9>&- || true
        if [ "$display" = null ]; then
            wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f \
                </dev/null >/dev/null 2>&1 9>&-
        fi
        wineserver -w </dev/null >/dev/null 2>&1 9>&- || true
        touch "$WINEPREFIX/.vmgui-ready"
    fi
    # A server that outlives each program by a minute; a second start fails and changes
    # nothing. When a new server starts, Wine's services (services.exe, explorer.exe ...)
    # are started here too, with no output attached: started by the program instead, they
    # would inherit its output and keep a test runner's pipe open until the server ends.
    if wineserver -p60 </dev/null >/dev/null 2>&1 9>&-; then
        wineboot </dev/null >/dev/null 2>&1 9>&- || true
    fi
} 9>"$WINEPREFIX.lock"

exec wine "$@"
