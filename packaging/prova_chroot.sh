#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the game's Debian package on a clean Debian 12, opens its manual
# page, starts it as a player would, from its menu entry, answers the name box,
# takes a screenshot, and listens: the songs (FluidSynth) and the card sound
# (Qt Multimedia) must both reach the sound server. Given the source tree, it
# then plays the player who builds the game himself: an ordinary user who may
# use sudo runs `make run` in a copy of the tree, and the game must start.
#
#   packaging/prova_chroot.sh <tavolata_…deb> [screenshot.png] [source tree]
#
# Run as root on a Debian host with debootstrap, Xvfb, xdotool and ImageMagick
# (openbox too, so that the window is maximised as on a desktop).
# The clean system is made once with debootstrap (minbase) in $LAVORO/base and
# copied afresh for every run, so each run installs on an untouched system.
# The package goes in with its dependencies only, no recommended packages, and
# the game must start like that; the sound check then adds the recommended
# sound server, PulseAudio, with a silent sink to record from. The game runs
# as an ordinary user of the chroot; the virtual X server runs on the host and
# is reached through the X socket directory.
#
# Settings: LAVORO (default /var/tmp/tavolata-prova), MIRROR (default: the
# host's Debian mirror), SCHERMO (X display, default :146), GEOMETRIA (default
# 1920x1080), ATTESA (seconds to wait for the window, default 30), ATTESA_MAKE
# (seconds `make run` may take to install, build and show the window, default
# 5400).
set -eu

if [ $# -lt 1 ]; then
    echo "usage: $0 <tavolata_…deb> [screenshot.png] [source tree]" >&2
    exit 2
fi
PACCHETTO=$(readlink -f "$1")
FOTO=$(readlink -f "${2:-tavolata-chroot.png}")
LAVORO=${LAVORO:-/var/tmp/tavolata-prova}
SCHERMO=${SCHERMO:-:146}
GEOMETRIA=${GEOMETRIA:-1920x1080}
ATTESA=${ATTESA:-30}
ATTESA_MAKE=${ATTESA_MAKE:-5400}
SORGENTE=${3:+$(readlink -f "$3")}
BASE=$LAVORO/base
RADICE=$LAVORO/radice
ID=io.github.tavolata.Tavolata
GIOCATORE=giocatore

mirror_dell_host() {
    grep -hoE 'https?://[^ ]+/debian/?( |$)' /etc/apt/sources.list /etc/apt/sources.list.d/*.list \
        /etc/apt/sources.list.d/*.sources 2>/dev/null | head -n 1 | tr -d ' ' | sed 's:/$::'
}
MIRROR=${MIRROR:-$(mirror_dell_host)}
MIRROR=${MIRROR:-http://deb.debian.org/debian}

for attrezzo in debootstrap Xvfb xdotool import identify; do
    command -v "$attrezzo" >/dev/null || { echo "missing on the host: $attrezzo" >&2; exit 1; }
done
[ -f "$PACCHETTO" ] || { echo "no such package: $1" >&2; exit 1; }
[ -z "$SORGENTE" ] || [ -f "$SORGENTE/Makefile" ] || { echo "no source tree at $3" >&2; exit 1; }

PID_X=
PID_WM=
PID_AUDIO=
PID_GIOCO=
PID_FINESTRA=
MONTATI=
chiudi_gioco() {
    for pid in $PID_FINESTRA $PID_GIOCO $PID_AUDIO; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    PID_FINESTRA=
    PID_GIOCO=
    PID_AUDIO=
}
pulisci() {
    chiudi_gioco
    for pid in $PID_WM $PID_X; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    PID_WM=
    PID_X=
    for punto in $MONTATI; do umount "$punto" 2>/dev/null || umount -l "$punto" 2>/dev/null || true; done
    MONTATI=
}
trap pulisci EXIT
trap 'pulisci; exit 1' INT TERM

monta() {  # monta <folder inside the chroot> <mount arguments…>
    bersaglio=$RADICE$1
    shift
    mkdir -p "$bersaglio"
    mount "$@" "$bersaglio"
    MONTATI="$bersaglio $MONTATI"
}

# A command inside the chroot, as the player, in his session (the PATH is the
# one Debian gives its users, games included). It replaces the shell that
# calls it, so that a command started in the background has its own process id
# in $!: call it with & or inside ( ).
come_giocatore() {
    exec chroot --userspec="$GIOCATORE:$GIOCATORE" "$RADICE" env -i HOME="/home/$GIOCATORE" USER="$GIOCATORE" \
        PATH=/usr/local/bin:/usr/bin:/bin:/usr/local/games:/usr/games LANG=C.UTF-8 DISPLAY="$SCHERMO" \
        XDG_RUNTIME_DIR="/run/user/$UID_GIOCATORE" "$@"
}

fallito() {
    echo "FAILED: $*" >&2
    echo "--- game output:" >&2
    cat "$LAVORO/gioco.log" >&2 || true
    exit 1
}

echo "== clean Debian 12 from $MIRROR"
if [ ! -x "$BASE/usr/bin/apt-get" ]; then
    rm -rf "$BASE"
    debootstrap --variant=minbase bookworm "$BASE" "$MIRROR"
fi
# A run that was killed may have left the host's /dev mounted in there.
if grep -q " $RADICE/" /proc/mounts; then
    echo "still mounted under $RADICE from an earlier run: unmount first" >&2
    exit 1
fi
rm -rf "$RADICE"
cp -a "$BASE" "$RADICE"
cat >"$RADICE/etc/apt/sources.list" <<EOF
deb $MIRROR bookworm main
deb $MIRROR bookworm-updates main
deb $MIRROR-security bookworm-security main
EOF
cp /etc/resolv.conf "$RADICE/etc/resolv.conf" 2>/dev/null || true

monta /proc -t proc proc
monta /sys -t sysfs sys
monta /dev --bind /dev
monta /dev/pts --bind /dev/pts
monta /tmp -t tmpfs tmpfs
monta /run -t tmpfs tmpfs

echo "== installing $(basename "$PACCHETTO") with its dependencies only"
cp "$PACCHETTO" "$RADICE/tmp/"
chroot "$RADICE" apt-get update -q
chroot "$RADICE" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends "/tmp/$(basename "$PACCHETTO")"
chroot "$RADICE" dpkg -L tavolata
chroot "$RADICE" useradd --create-home --shell /bin/sh "$GIOCATORE"
UID_GIOCATORE=$(chroot "$RADICE" id -u "$GIOCATORE")
install -d -m 700 -o "$UID_GIOCATORE" -g "$UID_GIOCATORE" "$RADICE/run/user/$UID_GIOCATORE"

echo "== the manual page, as the player reads it"
chroot "$RADICE" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends man-db \
    >"$LAVORO/man-db-apt.log"
(come_giocatore env MANPAGER=cat MANWIDTH=80 man 6 tavolata) >"$LAVORO/man.txt" 2>&1 ||
    { cat "$LAVORO/man.txt" >&2; fallito "man 6 tavolata"; }
head -n 12 "$LAVORO/man.txt"
grep -q "Italian rummy for one player against the computer" "$LAVORO/man.txt" ||
    fallito "the manual page does not say what the game is"

echo "== starting the menu entry on a virtual screen $GEOMETRIA"
Xvfb "$SCHERMO" -screen 0 "${GEOMETRIA}x24" -nolisten tcp >"$LAVORO/xvfb.log" 2>&1 &
PID_X=$!
numero=${SCHERMO#:}
for _ in $(seq 50); do [ -S "/tmp/.X11-unix/X$numero" ] && break; sleep 0.2; done
monta /tmp/.X11-unix --bind /tmp/.X11-unix
export DISPLAY="$SCHERMO"
if command -v openbox >/dev/null; then
    openbox >/dev/null 2>&1 &
    PID_WM=$!
fi

# The command is the desktop entry's Exec line, field codes removed.
VOCE="$RADICE/usr/share/applications/$ID.desktop"
COMANDO=$(sed -n 's/^Exec=//p' "$VOCE" | head -n 1 | sed 's/ *%[fFuUdDnNickvm]//g')
echo "Exec: $COMANDO"

avvia_gioco() {
    come_giocatore sh -c "exec $COMANDO" >"$LAVORO/gioco.log" 2>&1 &
    PID_GIOCO=$!
    for _ in $(seq "$ATTESA"); do
        xdotool search --onlyvisible --name . >/dev/null 2>&1 && break
        sleep 1
    done
    sleep 2
    # The first thing the game asks is the player's name; Return keeps the default.
    xdotool key Return
    sleep 5
    kill -0 "$PID_GIOCO" 2>/dev/null || fallito "the game is no longer running"
}

avvia_gioco
import -window root "$FOTO"
colori=$(identify -format '%k' "$FOTO")
echo "screenshot: $FOTO ($colori colours)"
[ "$colori" -ge 50 ] || fallito "the screen is nearly blank"
echo "--- game output:"
cat "$LAVORO/gioco.log"
chiudi_gioco

echo "== sound: PulseAudio with a silent sink"
chroot "$RADICE" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends pulseaudio \
    >"$LAVORO/pulseaudio-apt.log"
come_giocatore pulseaudio --daemonize=no --exit-idle-time=-1 --disallow-exit -n \
    -L module-native-protocol-unix -L "module-null-sink sink_name=ascolto" -L module-always-sink \
    >"$LAVORO/pulseaudio.log" 2>&1 &
PID_AUDIO=$!
for _ in $(seq 50); do (come_giocatore pactl info) >/dev/null 2>&1 && break; sleep 0.2; done
(come_giocatore pactl set-default-sink ascolto)

# ascolta <seconds>: the loudest sample (0..32767) reaching the sink meanwhile.
ascolta() {
    (come_giocatore timeout "$1" parec -d ascolto.monitor --raw --format=s16le --channels=1 --rate=8000) \
        2>/dev/null | od -An -v -td2 -w2 | awk 'BEGIN { m = 0 } { v = $1 < 0 ? -$1 : $1; if (v > m) m = v } END { print m }'
}

avvia_gioco
musica=$(ascolta 4)
echo "song playing: loudest sample $musica"
# Music, then "no music": the first item of the Music menu.
xdotool key alt+m
sleep 1
xdotool key Return
sleep 2
silenzio=$(ascolta 2)
echo "after \"no music\": loudest sample $silenzio"
# Game, then "New game": the deal draws the player's cards with the card sound.
(sleep 1; xdotool key alt+g; sleep 1; xdotool key Return) &
PID_TASTI=$!
carte=$(ascolta 8)
wait "$PID_TASTI"
echo "dealing with the card sound: loudest sample $carte"
[ "$musica" -gt 300 ] || fallito "no song reached the sound server"
[ "$silenzio" -lt 300 ] || fallito "\"no music\" left something playing"
[ "$carte" -gt 300 ] || fallito "no card sound reached the sound server"
chiudi_gioco

if [ -n "$SORGENTE" ]; then
    echo "== make run by an ordinary user who may use sudo"
    chroot "$RADICE" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends sudo make \
        >"$LAVORO/sudo-apt.log"
    echo "$GIOCATORE ALL=(ALL) NOPASSWD: ALL" >"$RADICE/etc/sudoers.d/$GIOCATORE"
    chmod 440 "$RADICE/etc/sudoers.d/$GIOCATORE"
    ALBERO=/home/$GIOCATORE/tavolata
    mkdir -p "$RADICE$ALBERO"
    tar -C "$SORGENTE" --exclude='./build*' --exclude=./.git -cf - . | tar -C "$RADICE$ALBERO" -xf -
    chroot "$RADICE" chown -R "$GIOCATORE:$GIOCATORE" "$ALBERO"
    come_giocatore sh -c "cd $ALBERO && exec make run" >"$LAVORO/make-run.log" 2>&1 &
    PID_GIOCO=$!
    inizio=$(date +%s)
    until xdotool search --onlyvisible --name Tavolata >/dev/null 2>&1; do
        kill -0 "$PID_GIOCO" 2>/dev/null || { tail -n 40 "$LAVORO/make-run.log" >&2; fallito "make run ended"; }
        [ $(($(date +%s) - inizio)) -lt "$ATTESA_MAKE" ] || fallito "make run showed no window"
        sleep 5
    done
    echo "window after $(($(date +%s) - inizio)) s"
    grep -E '^Installing:' "$LAVORO/make-run.log" || fallito "make run installed nothing through sudo"
    PID_FINESTRA=$(xdotool search --onlyvisible --name Tavolata getwindowpid 2>/dev/null | head -n 1)
    sleep 2
    xdotool key Return
    sleep 5
    kill -0 "$PID_GIOCO" 2>/dev/null || fallito "the game started by make run is no longer running"
    FOTO_MAKE=${FOTO%.png}-make-run.png
    import -window root "$FOTO_MAKE"
    colori=$(identify -format '%k' "$FOTO_MAKE")
    echo "screenshot: $FOTO_MAKE ($colori colours)"
    [ "$colori" -ge 50 ] || fallito "the screen is nearly blank"
    chiudi_gioco
fi

echo "PASSED: installed on a clean Debian 12, manual page opened, started from the menu entry, songs and card sounds heard${SORGENTE:+, make run by a user with sudo}"
