# Sourced by scripts/run: the display, the programs that it starts, and the pictures it takes.
# Uses $work, $logs and $shots, the folders for the programs, for what they say and for pictures.

# A display that answers, as far as files tell. DISPLAY=:3 with no server behind it is none.
have_display() {
  [ -n "${WAYLAND_DISPLAY:-}" ] && return 0
  case ${DISPLAY:-} in
    '') return 1 ;;
    :*)
      local number=${DISPLAY#:}
      [ -S "/tmp/.X11-unix/X${number%%.*}" ]
      ;;
  esac
}

# port_taken N: something on this computer is bound to UDP port N.
port_taken() {
  local hex
  printf -v hex ':%04X' "$1"
  cat /proc/net/udp /proc/net/udp6 2>/dev/null | awk -v port="$hex" 'substr($2, length($2) - 4) == port {found = 1} END {exit !found}'
}

children=()
scratch=
end_all() {
  local status=$? pid
  trap - EXIT
  trap '' INT TERM HUP
  for ((i = ${#children[@]} - 1; i >= 0; i--)); do end_child "${children[i]}"; done
  [ -z "$scratch" ] || rm -rf -- "$scratch"
  exit "$status"
}
# end_child PID: asks it to end, and does not wait for ever.
end_child() {
  kill "$1" 2>/dev/null || return 0
  for _ in {1..50}; do
    kill -0 "$1" 2>/dev/null || break
    sleep 0.1
  done
  kill -KILL "$1" 2>/dev/null || true
  wait "$1" 2>/dev/null || true
}
trap end_all EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

start() { # start LOG COMMAND...: in $work, in the background; its number in $started
  local log=$1
  shift
  (cd "$work" && exec "$@") >"$log" 2>&1 </dev/null &
  started=$!
  children+=("$started")
}
alive() { kill -0 "$1" 2>/dev/null; }

# died NAME PID LOG: says why in plain words, and ends.
died() {
  local status=0
  wait "$2" || status=$?
  say "The $1 ended by itself, with status $status. Its last words:"
  tail -n 20 "$3" | sed 's/^/    /'
  exit 1
}

virtual_display() {
  local number=
  scratch=$(mktemp -d)
  chmod 700 "$scratch"
  : >"$scratch/display"
  export XDG_RUNTIME_DIR=$scratch
  unset WAYLAND_DISPLAY
  Xvfb -displayfd 3 -screen 0 2560x1600x24 -noreset -nolisten tcp 3>"$scratch/display" >"$logs/xvfb.log" 2>&1 </dev/null &
  children+=($!)
  for _ in {1..100}; do
    read -r number <"$scratch/display" && break # a whole line
    alive "${children[-1]}" || break
    sleep 0.1
  done
  [ -n "$number" ] || fail "The virtual display did not start: $(tail -n 3 "$logs/xvfb.log")"
  export DISPLAY=:$number QT_QPA_PLATFORM=xcb
  openbox --sm-disable >"$logs/openbox.log" 2>&1 </dev/null &
  children+=($!)
  for _ in {1..50}; do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && return 0
    sleep 0.1
  done
  fail "The window manager did not start: $(tail -n 3 "$logs/openbox.log")"
}

# picture MOMENT: every open window into build/screenshots/MOMENT-title.png. False when there was none.
picture() {
  local id title name taken=" " some=no
  for id in $(xprop -root _NET_CLIENT_LIST | grep -o '0x[0-9a-f]*'); do
    title=$(xdotool getwindowname "$id" || true)
    name=$(tr -cs '[:alnum:]' '-' <<<"${title,,}" | sed 's/^-*//; s/-*$//')
    name=$1-${name:-window}
    while [[ $taken == *" $name "* ]]; do name+=-x; done
    taken+="$name "
    xdotool windowraise "$id" || continue
    sleep 0.2
    import -silent -window "$id" "$shots/$name.png" || continue
    some=yes
    say "    picture: ${shots#"$ROOT/"}/$name.png"
  done
  [ $some = yes ]
} 2>>"$logs/pictures.log"

# used PID: hundredths of a second of processor time that it has used.
used() { awk '{print $14 + $15}' "/proc/$1/stat"; }

# end_program NAME PID LOG: asks it to end. A crash on the way out counts.
end_program() {
  local status=0
  alive "$2" || died "$@"
  kill "$2" 2>/dev/null || true
  for _ in {1..50}; do
    alive "$2" || break
    sleep 0.1
  done
  if alive "$2"; then
    kill -KILL "$2"
    fail "The $1 did not end when asked to."
  fi
  wait "$2" || status=$?
  [ "$status" = 0 ] || [ "$status" = 143 ] || fail "The $1 crashed while ending (status $status): $(tail -n 5 "$3")"
}

# needles_moved LOG: in the virtual cockpit's lines, "time phase: instrument; instrument; ...", some instrument shows
# three numbers or more as time goes on. A number is known by its instrument's words and its place among them.
needles_moved() {
  awk '
    sub(/^[^ ]+ [^:]*: /, "") {
      instruments = split($0, instrument, /; */)
      for (i = 1; i <= instruments; ++i) {
        words = ""; numbers = 0
        fields = split(instrument[i], field, /[[:space:]=,|]+/)
        for (f = 1; f <= fields; ++f) {
          if (field[f] ~ /^[-+]?[0-9]+([.][0-9]+)?$/) number[++numbers] = field[f]
          else words = words " " field[f]
        }
        for (n = 1; n <= numbers; ++n)
          if (!((words, n, number[n]) in seen)) {
            seen[words, n, number[n]] = 1
            if (++places[words, n] >= 3) moved = 1
          }
      }
    }
    END { exit !moved }' "$1"
}
