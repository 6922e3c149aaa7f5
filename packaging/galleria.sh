#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Takes the screenshots of docs/gallery.md: the table after the deal at three
# screen sizes and at a device-pixel ratio of 2, with a piece of the 4K screens
# at full size, and the rules panel. (The score sheet needs a hand played to
# its end; its picture is taken by hand.)
#
#   packaging/galleria.sh [program] [folder]
#
# program defaults to build/tavolata, folder to docs. Needs Xvfb, openbox (the
# game asks to be maximised, which only a window manager does), xdotool and
# ImageMagick; pngquant, if installed, shrinks the pictures to a third. Each
# shot gets its own virtual screen, numbered from SCHERMO (default 141).
set -eu

PROGRAMMA=$(readlink -f "${1:-build/tavolata}")
CARTELLA=$(readlink -f "${2:-docs}")
SCHERMO=${SCHERMO:-141}

for attrezzo in Xvfb openbox xdotool import; do
    command -v "$attrezzo" >/dev/null || { echo "missing: $attrezzo" >&2; exit 1; }
done
[ -x "$PROGRAMMA" ] || { echo "no program at $PROGRAMMA" >&2; exit 1; }
mkdir -p "$CARTELLA"

PID_X=
PID_WM=
PID_GIOCO=
chiudi() {
    for pid in $PID_GIOCO $PID_WM $PID_X; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    PID_GIOCO=
    PID_WM=
    PID_X=
}
trap chiudi EXIT
trap 'chiudi; exit 1' INT TERM

# foto <screen WxH> <file> <scale factor> <piece WxH+X+Y or -> [keys pressed after the deal…]
# The piece, if given, is saved at full size as <file>-dettaglio.png.
foto() {
    geometria=$1
    file=$2
    scala=$3
    pezzo=$4
    shift 4
    schermo=":$SCHERMO"
    SCHERMO=$((SCHERMO + 1))
    Xvfb "$schermo" -screen 0 "${geometria}x24" -nolisten tcp >/dev/null 2>&1 &
    PID_X=$!
    for _ in $(seq 50); do [ -S "/tmp/.X11-unix/X${schermo#:}" ] && break; sleep 0.2; done
    DISPLAY=$schermo openbox >/dev/null 2>&1 &
    PID_WM=$!
    sleep 1
    DISPLAY=$schermo QT_SCALE_FACTOR=$scala "$PROGRAMMA" >/dev/null 2>&1 &
    PID_GIOCO=$!
    for _ in $(seq 30); do
        DISPLAY=$schermo xdotool search --onlyvisible --name . >/dev/null 2>&1 && break
        sleep 1
    done
    sleep 2
    # The name box comes first; Return keeps the name it offers.
    DISPLAY=$schermo xdotool key Return
    sleep 6
    for tasti in "$@"; do
        DISPLAY=$schermo xdotool key "$tasti"
        sleep 1
    done
    DISPLAY=$schermo import -window root "$CARTELLA/$file.png"
    salvati="$CARTELLA/$file.png"
    if [ "$pezzo" != - ]; then
        DISPLAY=$schermo import -window root -crop "$pezzo" +repage "$CARTELLA/$file-dettaglio.png"
        salvati="$salvati $CARTELLA/$file-dettaglio.png"
    fi
    chiudi
    for f in $salvati; do
        if command -v pngquant >/dev/null; then
            pngquant --quality=70-95 --speed 1 --strip --force --output "$f" "$f"
        fi
        echo "$f"
    done
}

# The piece of the 4K screens: the discard pile and the stock.
foto 1280x800 tavola-1280x800 1 -
foto 1920x1080 tavola 1 -
foto 3840x2160 tavola-3840x2160 1 1200x640+2640+860
foto 3840x2160 tavola-3840x2160-scala2 2 1200x640+2640+860
foto 1920x1080 regole 1 - alt+r Return
