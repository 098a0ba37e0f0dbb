# ./run demo: the company's data built by the data tool, then walked through the real module by a
# small client program. Sourced by ./run.

run_demo() {
  local company=$BUILD/demo/company
  build windows
  QRN_WINE_FUNCTIONS=1 . "$ROOT/scripts/wine.sh"
  wine_environment
  ensure_prefix "$WINEPREFIX" || die "Wine could not make a prefix"

  say "building the company's dictionary and data files in build/demo/company"
  rm -rf "$company"
  mkdir -p "$company"
  local tool=$BUILD/native-asan/bin/qrndata table
  "$tool" build examples/company/company.toml "$company" || die "qrndata could not build the schema"
  for table in examples/company/data/*.csv; do
    "$tool" import "$company" "$(basename "$table" .csv)" "$table" ||
      die "qrndata could not import $table"
  done
  "$tool" check "$company" || die "the company's data does not check out"

  say "a client of the flat interface, on Windows (Wine)"
  (cd "$BUILD/windows/bin" && "$WINE64" flattour.exe "Z:${company//\//\\}")
}
