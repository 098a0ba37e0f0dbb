# ./run demo: the company's data built by the data tool, then walked through the real module by a
# small client program and by forms. Sourced by ./run.

# The dictionary and data files of the sample company, every row of its CSV files, checked.
build_company() {
  local company=$1 tool=$BUILD/native-asan/bin/qrndata table
  say "building the company's dictionary and empty data files in ${company#"$ROOT"/}"
  rm -rf "$company"
  mkdir -p "$company"
  "$tool" build examples/company/company.toml "$company" || die "qrndata could not build the schema"
  say "importing the rows of examples/company/data/*.csv"
  for table in examples/company/data/*.csv; do
    "$tool" import "$company" "$(basename "$table" .csv)" "$table" ||
      die "qrndata could not import $table"
  done
  cp -r examples/company/data/pictures "$company"
  say "checking every key of every file against its records"
  "$tool" check "$company" || die "the company's data does not check out"
  say "what the orders are made of"
  "$tool" show "$company" Orders || die "qrndata could not show the orders"
}

# A client of the flat interface: an ordinary program that loads qrnbt350.ocx, on Windows (Wine).
tour_company() {
  local company=$1
  say "flattour.exe: a program that loads qrnbt350.ocx and works on these files by its functions"
  (cd "$BUILD/windows/bin" && "$WINE64" flattour.exe "Z:${company//\//\\}") ||
    die "the tour ended before its end"
}

run_demo() {
  mkdir -p "$BUILD/demo"
  build windows flattour qrnbt350 lexbase w64btrv qrnform qrndata
  QRN_WINE_FUNCTIONS=1 . "$ROOT/scripts/wine.sh"
  wine_environment
  ensure_prefix "$WINEPREFIX" || die "Wine could not make a prefix"
  clone_prefix "$WINEPREFIX" "$BUILD/demo/wine"
  wine_environment "$BUILD/demo/wine"
  build_company "$BUILD/demo/company"
  tour_company "$BUILD/demo/company"
  # What Wine started without a display shows nothing on one that comes later.
  "$WINESERVER" -k || true
  demo_forms "$BUILD/demo/company"
  demo_stations "$BUILD/demo/company"
  demo_new_user "$BUILD/demo/company"
}
