# shellcheck shell=bash
# Opens the sheet on the settings in the Wine prefix of ./run. Sourced, after wine.sh, never run.
# shellcheck disable=SC2034,SC2154  # for and from those who source this

# The desktop that windows live in on a screen without a window manager.
size=1024x768

hostArguments=()
reset=

# Takes the options of the sheet from the front of the words "$@"; leaves in `taken` how many words that were, 0 when
# the first is no such option. `me` is the command that they were given to.
take_sheet_option() {
  taken=2
  case $1 in
    --mode)
      [[ ${2-} == [123] ]] || usage_error "$me: --mode takes 1, 2 or 3."
      hostArguments+=(--mode "$2")
      ;;
    --profile)
      [[ ${2-} =~ ^[0-9]+$ ]] || usage_error "$me: --profile takes the number of a profile."
      hostArguments+=(--profile "$2")
      ;;
    --reset)
      reset=yes
      taken=1
      ;;
    *) taken=0 ;;
  esac
}

# Builds the sheet, and nothing else.
build_sheet() { "$root/scripts/build" windows Wayline RuntimeFiles >&2; }

# Makes this process the only one that has the settings.
take_settings() {
  use_prefix "$out/wine" || fail "The sheet is open already: close it first, it has the settings."
}

# Opens the sheet on the screen that there is; `host` is its process. Words as for set_up_prefix.
open_sheet() {
  create_prefix
  set_up_prefix "$@"
  [[ ! $reset ]] || rm -f "$WINEPREFIX"/drive_c/users/*/AppData/Local/Ostrel/Wayline/Data/Wayline.db*
  step "Opening the sheet ..."
  wine "$out/bin/Wayline.exe" "${hostArguments[@]}" >"$out/Wayline.out" 2>"$out/Wayline.err" &
  host=$!
}

# Waits until the sheet is gone and prints what it has said; the exit code is its.
wait_for_sheet() {
  local result=0
  wait "$host" || result=$?
  tr -d '\r' <"$out/Wayline.out"
  tr -d '\r' <"$out/Wayline.err" >&2
  return "$result"
}
