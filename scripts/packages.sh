# Debian packages, by what needs them. Sourced by ./run.

PACKAGES_BUILD=(g++ cmake ninja-build npm googletest libbenchmark-dev libcli11-dev
  libtomlplusplus-dev g++-mingw-w64-x86-64-posix mingw-w64-tools)

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
