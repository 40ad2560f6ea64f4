# Runs a mock-up on a virtual display of its own, with hands and a camera; to be sourced. Whatever
# happens, neither the display nor the plant nor its shared area is left behind.

programs=${programs:-$(dirname "${BASH_SOURCE[0]}")/../build/bin} # where they are
work=$(mktemp -d)
plant= area= camera= screen= led=

leave_nothing_behind() {
  local status=$?
  [[ $camera ]] && kill "$camera" 2>/dev/null
  if [[ $plant ]] && kill "$plant" 2>/dev/null; then wait "$plant" || true; fi
  [[ $area ]] && ipcrm -m "$area" 2>/dev/null
  [[ $screen ]] && kill "$screen" 2>/dev/null && wait "$screen"
  rm -rf "$work"
  exit "$status"
}
trap leave_nothing_behind EXIT
trap 'exit 130' INT TERM

# run_headless <program> [arguments...]
run_headless() {
  open_screen_for "$1"
  "$@" &
  plant=$!
}

# run_led <program> [arguments...]: the same, but the plant waits for leave before each cycle.
run_led() {
  open_screen_for "$1"
  mkfifo "$work/to" "$work/from"
  exec {to}<>"$work/to" {from}<>"$work/from"
  MOCK_UP_LED=8,9 "$@" 8<"$work/to" 9>"$work/from" {to}>&- {from}>&- &
  plant=$! led=1
  await_pause
}

open_screen_for() {
  type -P "$1" >/dev/null || { echo "$1 is not there, or not executable" >&2; exit 2; }
  open_screen
}

open_screen() {
  mkfifo "$work/display"
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
  screen=$!
  read -r display <"$work/display"
  export DISPLAY=:$display
}

# find_window <title>: the plant's window, and its area.
find_window() {
  window=$(timeout 60 xdotool search --sync --onlyvisible --name "$1" | head -n 1)
  eval "$(xdotool getwindowgeometry --shell "$window")"
  area=$("$programs/signal_journal" "$plant" --zone)
}

# Positions are those of the window. A hand takes a fifth of a second.
press() {
  xdotool mousemove --window "$window" "$1" "$2" mousedown 1 sleep 0.2 mouseup 1 \
    mousemove --window "$window" 900 390
}
# hold_until <x> <y> <signal> <value>: however long the controller takes to notice.
hold_until() {
  xdotool mousemove --window "$window" "$1" "$2" mousedown 1
  wait_for 120 "$3" "$4"
  xdotool mouseup 1 mousemove --window "$window" 900 390
}
click() { xdotool mousemove --window "$window" "$1" "$2" mousedown 1 sleep 0.2 mouseup 1; } # the window may go with it

# wait_for <seconds> <signal> <value> [<times>]
wait_for() {
  timeout "$1" "$programs/signal_journal" "$plant" --until "${@:2}" >/dev/null &
  local waiting=$!
  while [[ $led ]] && kill -0 "$waiting" 2>/dev/null; do cycles 1; done
  wait "$waiting" || {
    echo "$2 has not become $3 within $1 s; a fault's box may have stopped the plant" >&2
    exit 1
  }
}

# What the plant has to say until it waits again (doc/leading-a-mock-up.md); a fault ends all.
await_pause() {
  local line
  while read -r line <&"$from"; do
    case $line in
      pause*) return ;;
      end) led= && return ;;
      fault* | error*) echo "$line" >&2 && exit 1 ;;
    esac
  done
}

# cycles <number>: leave for so many, at the pace of a run of its own.
cycles() {
  local n
  for ((n = 0; n < $1; ++n)); do
    [[ $led ]] || break
    sleep 0.005
    echo go >&"$to"
    await_pause
  done
}

# A button by its label; several can be held.
hold() { echo "hold $*" >&"$to"; }
release() { echo "release $*" >&"$to"; }

take_picture() {
  ffmpeg -loglevel error -y -f x11grab -video_size "${WIDTH}x$HEIGHT" -i "$DISPLAY+$X,$Y" -frames:v 1 "$1"
}

record() {
  ffmpeg -loglevel error -y -f x11grab -framerate 12 -video_size "${WIDTH}x$HEIGHT" -i "$DISPLAY+$X,$Y" \
    -c:v ffv1 "$work/$1" </dev/null &
  camera=$!
}

# stop_recording <film> <animation>: an animation of the last quarter of a minute.
stop_recording() {
  kill -INT "$camera"
  wait "$camera" || true
  camera=
  ffmpeg -loglevel error -y -sseof -15 -i "$work/$1" \
    -vf "scale=694:-1,split[a][b];[a]palettegen=max_colors=64[p];[b][p]paletteuse=dither=none" "$2"
}

end_of_run() {
  wait "$plant"
  plant=
}
