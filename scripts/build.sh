# Configuring and building a preset. Sourced by ./run.

prepare() {
  mkdir -p "$BUILD"
  need "${PACKAGES_BUILD[@]}" "$@"
  need_locale
  fetch_sqlite
  copy_headers
}

# build PRESET [target...]
build() {
  local preset=$1
  shift
  if [ ! -f "$BUILD/$preset/build.ninja" ]; then
    cmake --preset "$preset" >"$BUILD/$preset.configure.log" 2>&1 ||
      { cat "$BUILD/$preset.configure.log" >&2; die "could not configure the $preset build"; }
  fi
  say "building $preset"
  ninja -C "$BUILD/$preset" --quiet "$@" || die "the $preset build failed: see the errors above"
}
