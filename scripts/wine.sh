# Sourced: a private Wine and a private screen, both gone when the script ends.

# One session at a time uses the prefix, since ending one stops its wineserver. QUILLET_WINE_PREFIX names
# another folder for whoever wants two sessions side by side.
# Without winemenubuilder Wine puts no menus into the home directory.
export WINEPREFIX=${QUILLET_WINE_PREFIX:-$out/wine-prefix}
export WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='

# The lock is held as descriptor 9. What stays running must not inherit it, or would hold it for ever.
session_directory='' screen_process='' in_session=''
quietly() { "$@" </dev/null >/dev/null 2>&1 9>&-; }

make_prefix() {
  local font port ready
  # A prefix that was only half made, or made by other rules than these, is made anew.
  ready=$WINEPREFIX/.ready-$(cksum <"$root/scripts/wine.sh" | cut -d ' ' -f 1)
  [ ! -e "$ready" ] || return 0
  say 'Making the Wine prefix (once).'
  mkdir -p "$WINEPREFIX/drive_c"
  # What a person has saved in its "Documents" stays.
  find "$WINEPREFIX" -mindepth 1 -maxdepth 1 ! -name drive_c -exec rm -rf {} +
  find "$WINEPREFIX/drive_c" -mindepth 1 -maxdepth 1 ! -name users -exec rm -rf {} +
  quietly wineboot --init || die 'wineboot failed'
  # "Documents" and the like are links into the home directory, where nothing of ours belongs.
  find "$WINEPREFIX/drive_c/users" -type l -exec sh -c 'rm "$1" && mkdir "$1"' make_folder {} \;
  # A crash ends the program instead of waiting for a click.
  quietly wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f || die 'wine reg failed'
  # COM12 is where the tests plug a modem in. The names that ports of this machine would get are taken.
  for port in COM{1..8}=/dev/null COM12="$WINEPREFIX/com12"; do
    quietly wine reg add 'HKLM\Software\Wine\Ports' /v "${port%%=*}" /d "${port#*=}" /f || die 'wine reg failed'
  done
  quietly winecfg -v win10 || die 'winecfg failed'
  # Wine's own fonts draw the caption buttons; what Tahoma lacks is looked for in the other two.
  cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  for font in Tahoma 'Tahoma Bold'; do
    quietly wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' /v "$font" \
      /t REG_MULTI_SZ /d 'WQY-MICROHEI.TTC,WenQuanYi Micro Hei\0DEJAVUSANS.TTF,DejaVu Sans' /f || die 'wine reg failed'
  done
  quietly wineserver -w
  touch "$ready"
}

start_screen() {
  local number
  session_directory=$(mktemp -d)
  mkfifo "$session_directory/number"
  # Opened both ways, so that a screen that dies at once does not leave us waiting for its number.
  exec 8<>"$session_directory/number"
  Xvfb -displayfd 8 -screen 0 1280x1024x24 -nolisten tcp -noreset \
    </dev/null >"$session_directory/log" 2>&1 9>&- &
  screen_process=$!
  read -r -t 20 number <&8 || die "no virtual screen: $(tail -n 3 "$session_directory/log")"
  exec 8>&-
  export DISPLAY=:$number
}

end_session() {
  trap '' EXIT
  [ -z "$in_session" ] || quietly wineserver -k || true
  [ -z "$screen_process" ] || { kill "$screen_process" && wait "$screen_process"; } 2>/dev/null || true
  [ -z "$session_directory" ] || rm -rf "$session_directory"
}

# start_session [screen]: takes the prefix, makes it if needed, starts Wine; with `screen` on an own display.
start_session() {
  local managed
  mkdir -p "$(dirname "$WINEPREFIX")"
  exec 9>"$WINEPREFIX.lock"
  flock -n 9 || { say 'Waiting for another session to leave the Wine prefix.'; flock 9; }
  in_session=yes
  trap end_session EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM HUP
  [ "${1:-}" != screen ] || start_screen
  quietly wineserver -k || true  # left over from a session that was killed
  make_prefix
  # Wine's own services start here, with no output of ours to hold open. Where there is no window manager,
  # windows get every click only when they draw their own frames and none is asked.
  managed=Y
  [ -z "$screen_process" ] || managed=N
  quietly wineserver -p
  quietly wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$managed" /f || die 'Wine does not start'
}
