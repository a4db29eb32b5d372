# SPDX-License-Identifier: MIT
# Sourced by the scripts that run the real program on a stage of their own: a display, a window
# manager, a MIDI server and the stand-in DAW. Everything started here ends with the script that
# sourced it. That script sets $out, a folder for logs, and $bin, the folder of the build.
# shellcheck shell=bash disable=SC2154

: "${screen:=1440x900x24}"
started=()

start() { # start NAME COMMAND...: in the background, its output in $out/NAME.log
    local name=$1
    shift
    "$@" <&0 >"$out/$name.log" 2>&1 &
    started+=($!)
}
finish() {
    trap - EXIT
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        kill "${started[i]}" 2>/dev/null || true
        wait "${started[i]}" 2>/dev/null || true
    done
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

await() { # await SECONDS COMMAND...: until the command succeeds
    local tries=$(($1 * 20))
    shift
    until "$@" >/dev/null 2>&1; do
        ((tries-- > 0)) || { echo "$(basename "$0"): gave up waiting for: $*" >&2; exit 1; }
        sleep 0.05
    done
}

has_alsa() { [ -c /dev/snd/seq ] && { : <>/dev/snd/seq; } 2>/dev/null; }
start_midi() {
    export VELT_MIDI=jack JACK_DEFAULT_SERVER=velt-stage-$$-$RANDOM JACK_NO_START_SERVER=1
    start jackd jackd -n "$JACK_DEFAULT_SERVER" -r -t 200 -d dummy -r 48000 -p 256
    # Its socket is there before it accepts connections, which the kernel marks by this flag.
    await 10 grep " 00010000 .*/jack_${JACK_DEFAULT_SERVER}_" /proc/net/unix
}
start_display() {
    start xvfb Xvfb -displayfd 3 -screen 0 "$screen" -dpi 96 -nolisten tcp -noreset 3>"$out/display"
    await 10 test -s "$out/display"
    DISPLAY=:$(cat "$out/display")
    export DISPLAY
    start openbox openbox --sm-disable
}

# The stand-in takes button presses from a pipe, so that a script can play the foot switch.
start_daw() {
    mkfifo "$out/buttons"
    exec 4<>"$out/buttons"
    start daw "$bin/rehearsal/velt-rehearsal" "Pro Tools" <"$out/buttons"
    await 15 grep -q ' ready' "$out/daw.log"
}
press() { echo "$1" >&4; }
says() { [ "$(grep -c " $1" "$out/daw.log")" -ge "$2" ]; }
daw_says() { await 10 says "$1" "${2:-1}"; } # daw_says WHAT [TIMES]: waits for a line of its log

start_velt() {
    start velt "$bin/app/velt"
    velt=${started[-1]}
}
window_of() { xdotool search --onlyvisible --name "^$1\$" | head -n 1; }
window_opens() { # window_opens TITLE: waits for it; clicks, keys and words go to it from now on
    await 15 xdotool search --onlyvisible --name "^$1\$"
    window=$(window_of "$1")
}
gone() { ! xdotool search --onlyvisible --name "^$1\$"; }
window_closes() { await 10 gone "$1"; }

# Where things are in the windows, in pixels from their top left corners, at 96 dots an inch. The
# operator window is about 500 wide, the dialogs have their own size.
declare -A places=(
    [menu About]='30 8' [LOCATE]='45 58' [Reset]='267 93' [Edit]='368 93' [Pref.]='448 93'
    [show]='200 122' [first title]='80 170' [empty rows]='200 500'
    [controller input]='307 157' [DAW input]='307 232' [DAW output]='307 307'
    [device ID]='65 382' [OK of preferences]='772 476'
    [new song]='80 55' [new show]='70 375' [first show]='100 436' [first song]='580 48'
    [to set list]='680 320' [space]='765 54' [first title of set list]='760 99'
    [first cue of set list]='980 99' [OK of editor]='70 640'
)
# press_at NAME [ROW [HEIGHT]]: clicks there, or this many rows of a table below.
press_at() {
    local x y
    read -r x y <<<"${places[$1]:?}"
    click "$x" $((y + ${2:-0} * ${3:-19}))
}
click() { xdotool mousemove --window "$window" "$1" "$2" click "${3:-1}"; }
key() { xdotool windowfocus --sync "$window" key "$@"; }
