#!/usr/bin/env bash
# Runs a Windows program as the tests and the build do: private prefix, Japanese locale, no dialogs
# on a crash.
#   scripts/wine.sh PROGRAM [ARG...]
# QRN_PREFIX  the prefix (default build/wine-prefix, made on first use)
# QRN_WINEDEBUG  Wine's debug channels (default none)
# Sourced with QRN_WINE_FUNCTIONS=1 it only defines its functions.
set -euo pipefail
WINE_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
WINE64=/usr/lib/wine/wine64
WINESERVER=/usr/lib/wine/wineserver64
[ -x "$WINESERVER" ] || WINESERVER=/usr/lib/wine/wineserver

wine_environment() {
  export WINEPREFIX=${1:-${QRN_PREFIX:-$WINE_ROOT/build/wine-prefix}}
  export LC_ALL=ja_JP.UTF-8
  export WINEDEBUG=${QRN_WINEDEBUG:--all}
  export WINEDLLOVERRIDES="mscoree,mshtml="
  export WINEARCH=win64
}

# Settings of a prefix: crashes end a run with a backtrace instead of a dialog, Wine draws the title
# bars and manages its windows itself (there is no window manager to ask, and waiting for one costs
# every message box two seconds), and the Japanese interface fonts have a face.
wine_settings() {
  local fonts='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes'
  cat <<EOF
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\\Software\\Wine\\WineDbg]
"ShowCrashDialog"=dword:00000000

[HKEY_CURRENT_USER\\Software\\Wine\\X11 Driver]
"Decorated"="N"
"Managed"="N"

[${fonts/HKLM/HKEY_LOCAL_MACHINE}]
"MS PGothic"="VL PGothic"
"MS UI Gothic"="VL PGothic"
"MS Gothic"="VL Gothic"
"ＭＳ Ｐゴシック"="VL Pゴシック"
"ＭＳ ゴシック"="VL ゴシック"
EOF
}

settings_digest() { wine_settings | sha256sum; }

# make_prefix DIR: a fresh prefix with our settings. About ten seconds.
make_prefix() {
  local dir=$1 settings
  rm -rf "$dir"
  mkdir -p "$dir"
  (
    wine_environment "$dir"
    unset DISPLAY
    settings=$dir/settings.reg
    "$WINE64" wineboot -i >/dev/null 2>&1 || true
    { printf '\xff\xfe'; wine_settings | sed 's/$/\r/' | iconv -f UTF-8 -t UTF-16LE; } >"$settings"
    "$WINE64" winecfg -v win10 >/dev/null 2>&1
    "$WINE64" regedit /S "Z:${settings//\//\\}" >/dev/null 2>&1
    "$WINESERVER" -w
    cp /usr/share/wine/fonts/marlett.ttf "$dir/drive_c/windows/Fonts/" 2>/dev/null || true
  )
  [ -f "$dir/system.reg" ] || { echo "wine.sh: could not make a Wine prefix in $dir" >&2; return 1; }
  settings_digest >"$dir/.ready"
}

# clone_prefix FROM TO: a copy by hard links; the registry files are copied for real.
clone_prefix() {
  rm -rf "$2"
  cp -al "$1" "$2"
  local file
  for file in "$2"/*.reg; do
    cp "$file" "$file.own" && mv "$file.own" "$file"
  done
}

# ensure_prefix DIR: makes the prefix, anew if it was made with other settings.
ensure_prefix() {
  [ "$(cat "$1/.ready" 2>/dev/null)" = "$(settings_digest)" ] || make_prefix "$1"
}

if [ "${QRN_WINE_FUNCTIONS:-0}" = 0 ]; then
  wine_environment
  mkdir -p "$WINE_ROOT/build"
  # Two builds at once must not make the prefix twice.
  exec 9>"$WINE_ROOT/build/.wine-prefix.lock"
  flock 9
  ensure_prefix "$WINEPREFIX"
  exec 9>&-
  exec "$WINE64" "$@"
fi
