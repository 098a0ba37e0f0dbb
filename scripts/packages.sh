# Debian packages, by what needs them. Sourced by ./run.

PACKAGES_BUILD=(g++ cmake ninja-build npm googletest libbenchmark-dev libcli11-dev
  libtomlplusplus-dev zlib1g-dev libz-mingw-w64-dev g++-mingw-w64-x86-64-posix mingw-w64-tools wine64 locales icoutils)
PACKAGES_TEST=(xvfb fonts-vlgothic fonts-wine clang-format xdotool imagemagick unzip zip sqlite3)
PACKAGES_SERVER=(postgresql openssl)
PACKAGES_LINT=(clang clang-tidy)

installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q '^install ok installed'; }

# need PACKAGE...: installs those that are missing.
need() {
  local missing=() package
  for package in "$@"; do
    case $package in
      npm) command -v npm >/dev/null && continue ;;  # Node may come from elsewhere
    esac
    installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "installing ${missing[*]}"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  { "${as_root[@]}" apt-get update -qq &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
      --no-install-recommends "${missing[@]}"; } >"$BUILD/packages.log" 2>&1 ||
    die "could not install ${missing[*]}: see build/packages.log"
}

# Under any other locale the Windows programs take the ANSI code page to be 1252.
need_locale() {
  locale -a 2>/dev/null | grep -qi '^ja_JP.utf-\?8$' && return
  say "making the Japanese locale"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" localedef -i ja_JP -f UTF-8 ja_JP.UTF-8 || die "could not make the locale ja_JP.UTF-8"
}
