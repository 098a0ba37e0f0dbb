# Configuring and building a preset. Sourced by ./run.

prepare() {
  mkdir -p "$BUILD"
  need "${PACKAGES_BUILD[@]}" "$@"
  need_locale
  fetch_sqlite
  fetch_xlsxwriter
  copy_headers
}

# build PRESET [target...]
build() {
  local preset=$1
  shift
  if [ ! "$BUILD/$preset/build.ninja" -nt "$ROOT/CMakePresets.json" ]; then
    cmake --preset "$preset" >"$BUILD/$preset.configure.log" 2>&1 ||
      { cat "$BUILD/$preset.configure.log" >&2; die "could not configure the $preset build"; }
  fi
  say "building $preset"
  ninja -C "$BUILD/$preset" --quiet "$@" || die "the $preset build failed: see the errors above"
  # Programs that are no longer part of it: a test would run for ever after.
  ninja -C "$BUILD/$preset" -t cleandead >/dev/null
}
