# shellcheck shell=bash
# Runs Windows programs in a Wine prefix of the project's own, on the screen that there is or one made for them.
# Sourced, after lib.sh, never run.
# shellcheck disable=SC2154  # `out` comes from lib.sh

# Called by name: Debian's `wine` asks for the 32-bit Wine each time, which no program here needs.
wineLoader=/usr/lib/wine/wine64
wineServer=/usr/lib/wine/wineserver64

# Processes to end, and folders to remove, when this process ends.
helpers=()
leftovers=()

# Makes this process the only user of the prefix $1; fails when another one is using it. Whatever is left in the prefix
# when the process ends is ended with it.
use_prefix() {
  export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=${WINEDEBUG--all} WINELOADER=$wineLoader WINESERVER=$wineServer
  # No offers to install Mono and Gecko, no menu entries in the user's home.
  export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
  export XDG_CACHE_HOME=$out/cache

  mkdir -p "$(dirname "$WINEPREFIX")"
  : >>"$WINEPREFIX.lock" || fail "$WINEPREFIX.lock cannot be written."
  exec 9>>"$WINEPREFIX.lock"
  flock --nonblock 9 || return

  trap end_all EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM HUP
  "$wineServer" -k || true
}

# The same for one of the prefixes that tests and benchmarks use: the first that is free, so that several of them can run
# side by side.
use_free_prefix() {
  local number=1
  until use_prefix "$out/wine-tests/$number"; do number=$((number + 1)); done
}

end_all() {
  # A second Ctrl+C must not cut this short.
  trap '' INT TERM HUP
  "$wineServer" -k 7>&- 9>&- || true
  local process
  for process in "${helpers[@]}"; do
    kill "$process" 2>/dev/null || true
  done
  ((${#leftovers[@]} == 0)) || rm -rf "${leftovers[@]}"
}

# Callers send stdout and stderr into files: Wine takes hold of a terminal that it is given, and its services keep a
# pipe open. Descriptors 7 to 9 hold locks; nothing that may outlive this process inherits them.
wine() { "$wineLoader" "$@" </dev/null 7>&- 8>&- 9>&-; }

# Starts the X server "$@" on a display that is free, and makes it the screen of what follows. Its own session spares
# it Ctrl+C: the programs on it go first.
start_screen() {
  local answer number
  exec {answer}< <(exec setsid "$@" -displayfd 1 -nolisten tcp 2>"$WINEPREFIX-screen.log" 7>&- 9>&-)
  helpers+=($!)
  read -r -t 20 number <&"$answer" || fail "$1 did not start: $(cat "$WINEPREFIX-screen.log")"
  unset XAUTHORITY
  export DISPLAY=:$number
}

# Creates the prefix when it is missing: as a copy of one that nobody uses, which takes a tenth of the time.
create_prefix() {
  [[ ! -d $WINEPREFIX ]] || return 0
  local pristine=$out/wine-pristine
  (
    flock 8
    [[ -d $pristine ]] || create_pristine_prefix "$pristine"
  ) 8>"$pristine.lock"
  rm -rf "$WINEPREFIX.new"
  cp --archive --reflink=auto "$pristine" "$WINEPREFIX.new"
  mv "$WINEPREFIX.new" "$WINEPREFIX"
}

# Creates the prefix $1. Needs a screen: without one COM's services do not start.
create_pristine_prefix() {
  step "Preparing Wine (once, some 15 seconds) ..."
  (
    # Under a name of its own until it is complete, so that an interrupted attempt leaves nothing half-made behind.
    complete=$1
    export XAUTHORITY=${XAUTHORITY-$HOME/.Xauthority}
    export WINEPREFIX=$complete.new HOME=$complete.home
    trap '"$wineServer" -k || true' EXIT
    rm -rf "$WINEPREFIX" "$HOME"
    mkdir "$HOME"
    wine wineboot --init >"$out/wineboot.log" 2>&1 || fail "Wine could not be prepared: $(cat "$out/wineboot.log")"
    "$wineServer" -w
    # Folders of their own in place of links into a home.
    find "$WINEPREFIX/drive_c/users" -type l -exec sh -c 'rm "$0" && mkdir "$0"' {} \;
    # Debian's Wine does not look where Debian puts Wine's fonts. Tahoma decides the size of every dialog, and without
    # Marlett caption buttons show letters.
    ln -s /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts"
    rm -rf "$HOME"
    mv "$WINEPREFIX" "$complete"
  )
}

# Settings of the prefix: $1 is Y when the windows belong to a window manager, N when there is none; $2 is the size of
# the Wine desktop that programs run in, or empty for none; $3 is the program that shows web pages, or empty for the
# user's browser. Unlike `explorer /desktop`, this way of naming a desktop leaves a program's exit code alone. In it Wine
# paints the title of every dialog as inactive; one colour for both states spares the onlooker that.
set_up_prefix() {
  local desktop='"Desktop"=-'
  [[ -z ${2-} ]] || desktop='"Desktop"="Wayline"'
  local browsers='"Browsers"=-'
  [[ -z ${3-} ]] || browsers="\"Browsers\"=\"$3\""
  local settings=$WINEPREFIX/settings.reg
  cat >"$settings.new" <<REG
REGEDIT4

[HKEY_CURRENT_USER\\Software\\Wine\\X11 Driver]
"Managed"="$1"

[HKEY_CURRENT_USER\\Software\\Wine\\Explorer]
$desktop

[HKEY_CURRENT_USER\\Software\\Wine\\Explorer\\Desktops]
"Wayline"="${2-}"

[HKEY_CURRENT_USER\\Control Panel\\Colors]
"Background"="88 96 104"
"ActiveTitle"="54 95 145"
"GradientActiveTitle"="54 95 145"
"TitleText"="255 255 255"
"InactiveTitle"="54 95 145"
"GradientInactiveTitle"="54 95 145"
"InactiveTitleText"="255 255 255"

[HKEY_CURRENT_USER\\Software\\Wine\\WineDbg]
"ShowCrashDialog"=dword:00000000

; Help pages go to a browser outside Wine, whose own one needs a part that is not installed.
[HKEY_LOCAL_MACHINE\\Software\\Classes\\.html]
@="HelpPage"

[HKEY_LOCAL_MACHINE\\Software\\Classes\\HelpPage\\shell\\open\\command]
@="winebrowser.exe \\"%1\\""

[HKEY_CURRENT_USER\\Software\\Wine\\WineBrowser]
$browsers
REG
  if cmp --silent "$settings.new" "$settings"; then
    rm "$settings.new"
    return
  fi
  wine regedit /S "$settings.new" >/dev/null 2>&1 || fail "The settings of $WINEPREFIX could not be written."
  # Programs that are running, such as the desktop, would go on with the old settings.
  "$wineServer" -k
  mv "$settings.new" "$settings"
}
