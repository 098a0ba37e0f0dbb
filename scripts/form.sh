# ./run form FILE [ARG...]: opens a form with the module, on the present display. Sourced by ./run.
#
# The form runs in the folder of the company's data, which is built on first use, so that the
# example forms find it. What follows FILE goes to qrnform as it stands.

# company_data DIR: the company's dictionary and data files, once.
company_data() {
  local company=$1 tool=$BUILD/native-asan/bin/qrndata table
  [ -f "$company/file.ddf" ] && return
  build native-asan qrndata
  say "building the company's data in ${company#"$ROOT"/}"
  mkdir -p "$company"
  "$tool" build examples/company/company.toml "$company" || die "qrndata could not build the schema"
  for table in examples/company/data/*.csv; do
    "$tool" import "$company" "$(basename "$table" .csv)" "$table" ||
      die "qrndata could not import $table"
  done
}

# windows_path FILE: as programs under Wine see it.
windows_path() {
  local path
  path=$(realpath -m "$1")
  printf 'Z:%s' "${path//\//\\}"
}

run_form() {
  local form=$1 file
  shift
  [ -n "${DISPLAY:-}" ] || die "there is no display: set DISPLAY, or start one with Xvfb"
  [ -f "$form" ] || die "there is no file $form"
  file=$(windows_path "$form")
  build windows qrnform qrnbt350 w64btrv lexbase
  company_data "$BUILD/company"
  (cd "$BUILD/company" && exec "$ROOT/scripts/wine.sh" "$BUILD/windows/bin/qrnform.exe" "$@" "$file")
}

# demo_forms DIR: the example forms before real key and mouse input, on a display of their own.
demo_forms() {
  local company=$1 number=$BUILD/demo/display code=0
  : >"$number"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number" >/dev/null 2>&1 &
  xvfb=$!
  trap 'kill "$xvfb" 2>/dev/null' EXIT
  for _ in $(seq 100); do
    [ -s "$number" ] && break
    sleep 0.1
  done
  say "the customer list: code that walks the customers through the database control"
  demo_form "$company" "$number" walk || code=1
  say "the customer card: found, changed, inserted, a duplicate, deleted, by key and mouse"
  [ "$code" -ne 0 ] || demo_form "$company" "$number" customers || code=1
  "$WINESERVER" -k || true
  kill "$xvfb" 2>/dev/null || true
  trap - EXIT
  [ "$code" -eq 0 ] || die "a form did not do what its script says"
  say "pictures: build/demo/company/*.png"
}

# demo_form DIR DISPLAY-FILE NAME: examples/company/NAME.frm with its script NAME.txt.
demo_form() (
  cd "$1"
  DISPLAY=:$(cat "$2")
  export DISPLAY
  "$WINE64" "$BUILD/windows/bin/qrnform.exe" \
    --script "$(windows_path "$ROOT/examples/company/$3.txt")" \
    "$(windows_path "$ROOT/examples/company/$3.frm")"
)
