#!/usr/bin/env bash
# Sets up the machine, builds the demo program (examples/demo) and runs it under Wine.
#
# With a DISPLAY, the demo opens its window there and runs until it is closed; arguments
# are passed on to it (--mdi starts with the multiple-document window).
#
# Without one, it runs on a virtual X server (Xvfb, 1024x768) in a Wine desktop, eleven times,
# and a screenshot is taken each time: the main window, the main window with its "Ansicht"
# menu open, the settings dialog, the gallery's dialog of every control kind, the message
# box, the multiple-document window, the drawing view, the lists view, the open dialog,
# the colour dialog and the main window with the tooltip of a tool-bar button. The demo ends
# by itself after each screenshot; the paths of the PNG files are printed at the end. Each screenshot is also written small, cut to the windows on
# the desktop, to doc/images/ (the README's pictures).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="${VMGUI_BUILD_DIR:-$root/build}"
jobs=$(nproc)

bash "$root/tools/setup.sh" --demo

echo "== Windows build of the demo"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" >/dev/null
cmake --build "$build" -j "$jobs" --target demo

demo="$build/bin/demo.exe"
# Wine's own fonts (Tahoma for the dialogs, Marlett for the caption buttons) are found
# through fontconfig.
fonts="$build/demo-fonts.conf"
cat >"$fonts" <<'EOF_FONTS'
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
    <include ignore_missing="yes">/etc/fonts/fonts.conf</include>
    <dir>/usr/share/wine/fonts</dir>
</fontconfig>
EOF_FONTS

# Wine with its X11 driver, in a prefix of its own (the tests' prefix has no display). The
# German locale gives the demo the code page of its texts (1252) and Wine's German button
# texts.
export VMGUI_WINE_DISPLAY=x11
export VMGUI_WINEPREFIX="$build/wineprefix-x11"
wine_run=(env LC_ALL=de_DE.UTF-8 FONTCONFIG_FILE="$fonts" "$root/tools/wine-run.sh")

if [ -n "${DISPLAY:-}" ]; then
    echo "== The demo on display $DISPLAY (close its window to end it)"
    exec "${wine_run[@]}" "$demo" "$@"
fi

# A Windows path of a file (Wine's drive Z: is the root folder).
windows_path() {
    local path
    path="$(cd "$(dirname "$1")" && pwd)/$(basename "$1")"
    echo "Z:${path//\//\\}"
}

# A free display from :99 on, and a virtual X server on it. The server keeps its screen in
# a file (XWD format), from which the screenshots are taken: reading the screen through
# the X protocol (xwd -root) leaves out menus and dialogs, whose windows ask the server to
# save what they cover.
number=99
while [ -e "/tmp/.X11-unix/X$number" ] || [ -e "/tmp/.X$number-lock" ]; do
    number=$((number + 1))
done
export DISPLAY=":$number"
screen="$build/xvfb-screen"
rm -rf "$screen"
mkdir -p "$screen"
Xvfb "$DISPLAY" -screen 0 1024x768x24 -nolisten tcp -nocursor -fbdir "$screen" \
    >"$build/xvfb.log" 2>&1 &
xvfb=$!
finish() {
    # The demo prefix's Wine server and services knew this display only.
    WINEPREFIX="$VMGUI_WINEPREFIX" wineserver -k >/dev/null 2>&1 || true
    kill "$xvfb" 2>/dev/null || true
    wait "$xvfb" 2>/dev/null || true
    rm -rf "$screen"
}
trap finish EXIT
for _ in $(seq 1 100); do
    [ -e "/tmp/.X11-unix/X$number" ] && break
    sleep 0.1
done
if [ ! -e "/tmp/.X11-unix/X$number" ]; then
    echo "run-demo: Xvfb did not start on $DISPLAY (see $build/xvfb.log)" >&2
    exit 1
fi

ready="$build/demo-ready"
shots=()
images="$root/doc/images"
mkdir -p "$images"

# small SCREENSHOT OUT: the part of the screenshot that the windows cover (the desktop's
# colour, taken from the bottom-right corner, cut away all round), at most 560 by 420 pixels
# in 128 colours.
small() {
    local desktop
    desktop=$(convert "$1" -format '%[pixel:p{1023,767}]' info:)
    convert "$1" -bordercolor "$desktop" -border 1 -trim +repage -resize '560x420>' -strip \
        -colors 128 "PNG8:$2"
}

# shot NAME ARGS...: runs the demo with ARGS in a Wine desktop, waits until it has written
# its ready file (the window is up, and a menu or dialog that ARGS ask for is open), takes
# the screenshot build/NAME.png, and waits for the demo to end by itself.
shot() {
    local name=$1
    shift
    local png="$build/$name.png"
    rm -f "$ready" "$png"
    echo "== Screenshot $name: demo.exe $*"
    "${wine_run[@]}" explorer "/desktop=VmGuiDemo,1024x768" "$(windows_path "$demo")" \
        --exit-after 5 --ready-file "$(windows_path "$ready")" "$@" &
    local wine=$!
    # The first run boots the prefix, which takes a while.
    for _ in $(seq 1 900); do
        [ -e "$ready" ] && break
        kill -0 "$wine" 2>/dev/null || break
        sleep 0.2
    done
    if [ ! -e "$ready" ]; then
        echo "run-demo: the demo did not get ready" >&2
        kill "$wine" 2>/dev/null || true
        wait "$wine" 2>/dev/null || true
        return 1
    fi
    convert "xwd:$screen/Xvfb_screen0" "$png"
    small "$png" "$images/$name.png"
    wait "$wine" || true
    rm -f "$ready"
    shots+=("$png")
}

shot demo
shot demo-menu --show menu
shot demo-dialog --show dialog
shot demo-controls --show controls
shot demo-message --show message
shot demo-mdi --mdi
shot demo-drawing --show drawing
shot demo-lists --show lists
shot demo-open --show open
shot demo-color --show color
shot demo-toolbar --show toolbar

echo "== Screenshots"
printf '%s\n' "${shots[@]}"
