# Sourced by the Wine launchers: the project's own prefix, a quiet Wine, a private Xvfb when
# there is no display, and the prefix made once.
zk_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX="${ZK_WINEPREFIX:-$zk_root/build/wineprefix}"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
export WINEARCH=win64
zk_xvfb_pid=""

# Starts Xvfb on a free display and exports DISPLAY, unless there is a display already.
zk_start_xvfb() {
  [ -n "${DISPLAY:-}" ] && return 0
  local fifo display=""
  fifo=$(mktemp -u)
  mkfifo "$fifo"
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$fifo" >/dev/null 2>&1 &
  zk_xvfb_pid=$!
  read -r -t 20 display <"$fifo"
  rm -f "$fifo"
  if [ -z "$display" ]; then
    echo "Xvfb did not start" >&2
    return 1
  fi
  export DISPLAY=":$display"
}

zk_stop_xvfb() {
  if [ -n "$zk_xvfb_pid" ]; then
    kill "$zk_xvfb_pid" >/dev/null 2>&1
    wait "$zk_xvfb_pid" 2>/dev/null
    zk_xvfb_pid=""
  fi
}

zk_stop_wineserver() {
  wineserver -k >/dev/null 2>&1
  wineserver -w >/dev/null 2>&1
}

zk_make_prefix() {
  mkdir -p "$(dirname "$WINEPREFIX")"
  (
    flock 9
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
      echo "creating the Wine prefix $WINEPREFIX (once)" >&2
      wineboot -i >/dev/null 2>&1
      wineserver -w >/dev/null 2>&1
    fi
  ) 9>"$(dirname "$WINEPREFIX")/.wineprefix.lock"
}

# A fixed locale gives the prefix the same ANSI code page (1252) on every machine.
zk_wine() { LANG=en_US.UTF-8 LC_ALL=en_US.UTF-8 wine "$@"; }
