# ./run form [OPTION...] FILE...: opens a form with the module, on the present display. Sourced by
# ./run, which has just gone to its own folder.
#
# The form runs in the folder of the company's data, which is built on first use, so that the
# example forms find it. Options go to qrnform, whose --help tells them.
CALLER=${OLDPWD:-$ROOT}

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
  cp -r examples/company/data/pictures "$company"
}

# windows_path FILE: as programs under Wine see it.
windows_path() {
  local path
  path=$(realpath -m "$1")
  printf 'Z:%s' "${path//\//\\}"
}

# read_form_line ARG...: what goes to qrnform, into FORM_LINE. Files are looked for from where the
# user stands, since the form runs in another folder. A form that is not there ends the run.
FORM_LINE=()
read_form_line() {
  local forms=0 name value
  while [ $# -gt 0 ]; do
    case $1 in
      --script | --shot | --module)
        [ $# -ge 2 ] || misused "form: $1 needs a file"
        FORM_LINE+=("$1" "$(form_path "$1" "$2")") || exit 1
        shift
        ;;
      --script=* | --shot=* | --module=*)
        name=${1%%=*} value=${1#*=}
        FORM_LINE+=("$name" "$(form_path "$name" "$value")") || exit 1
        ;;
      --help | -h | --design) forms=1 FORM_LINE+=("$1") ;;
      -*) FORM_LINE+=("$1") ;;
      *)
        FORM_LINE+=("$(form_path form "$1")") || exit 1
        forms=1
        ;;
    esac
    shift
  done
  [ "$forms" -eq 1 ] || misused "form needs the file of a form"
}

# form_path WHAT FILE: the file as qrnform is to be told of it; WHAT it is for says what it needs. A
# path with a drive is a Windows path already.
form_path() {
  local path=$2
  case $path in
    [A-Za-z]:*) printf '%s' "$path"; return ;;
    /*) ;;
    *) path=$CALLER/$path ;;
  esac
  if [ "$1" = --shot ]; then
    [ -d "$(dirname "$path")" ] || die "there is no folder for the picture $2"
  elif [ ! -f "$path" ]; then
    die "there is no file $2"
  fi
  windows_path "$path"
}

# run_form: the form of FORM_LINE.
run_form() {
  [ -n "${DISPLAY:-}" ] || die "there is no display: set DISPLAY, or start one with Xvfb"
  build windows qrnform qrnbt350 w64btrv lexbase
  company_data "$BUILD/company"
  (cd "$BUILD/company" &&
    exec "$ROOT/scripts/wine.sh" "$BUILD/windows/bin/qrnform.exe" "${FORM_LINE[@]}")
}

# demo_display: a display of the demonstration's own, its number in build/demo/display, its process
# in xvfb.
demo_display() {
  local number=$BUILD/demo/display
  : >"$number"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number" >/dev/null 2>&1 &
  xvfb=$!
  trap 'kill "$xvfb" 2>/dev/null' EXIT
  for _ in $(seq 100); do
    [ -s "$number" ] && break
    sleep 0.1
  done
}

# demo_forms DIR: the example forms before real key and mouse input.
demo_forms() {
  local company=$1 number=$BUILD/demo/display code=0
  demo_display
  say "the customer list: code that walks the customers through the database control"
  demo_form "$company" "$number" walk || code=1
  say "the customer card: found, changed, inserted, a duplicate, deleted, by key and mouse"
  [ "$code" -ne 0 ] || demo_form "$company" "$number" customers || code=1
  say "the customer card again, by the keyboard alone: the list on the way, boxes answered by keys"
  [ "$code" -ne 0 ] || demo_form "$company" "$number" keyboard customers walk || code=1
  say "the look-up: a list narrowed by letters, a choice that shows its card, combos that write codes"
  [ "$code" -ne 0 ] || demo_form "$company" "$number" lookup || code=1
  say "the products: thumbs dragged to the middle, pictures, a check box and option buttons that store"
  [ "$code" -ne 0 ] || demo_form "$company" "$number" products || code=1
  say "the orders: lines in a grid that follow the order, a quantity changed in its cell, a line deleted"
  [ "$code" -ne 0 ] || demo_form "$company" "$number" orders || code=1
  say "the company's main form: departments and staff, every other form opened from it"
  [ "$code" -ne 0 ] || demo_form "$company" "$number" main || code=1
  say "a form made from the dictionary in one command, an order with its lines, worked at once"
  [ "$code" -ne 0 ] || demo_made "$company" "$number" || code=1
  "$WINESERVER" -k || true
  kill "$xvfb" 2>/dev/null || true
  trap - EXIT
  [ "$code" -eq 0 ] || die "a form did not do what its script says"
}

# demo_stations DIR: the data moved to a server, the card at two stations there, the data back.
demo_stations() {
  local code=0
  say "two stations: the data on a server, a customer changed by one while the other has it shown"
  demo_display
  DISPLAY=:$(cat "$BUILD/demo/display") QRN_WINE=$WINE64 "$ROOT/scripts/two-stations.sh" "$1" || code=1
  "$WINESERVER" -k || true
  kill "$xvfb" 2>/dev/null || true
  trap - EXIT
  [ "$code" -eq 0 ] || die "the two stations did not do what their scripts say"
}

# demo_new_user DIR: the package unpacked in an empty prefix, and the designer in it before somebody
# new: a form by the wizard, then one drawn by hand. DIR has the dictionary.
demo_new_user() {
  local company=$1 prefix=$BUILD/demo/wine-new-user code=0
  . "$ROOT/scripts/new-user.sh"
  say "a new user: the package unpacked where nothing is installed, its module registered"
  make_package
  rm -rf "$BUILD/demo/unpacked"
  unzip -q "$BUILD/qrnbt350.zip" -d "$BUILD/demo/unpacked"
  demo_display
  (
    DISPLAY=:$(cat "$BUILD/demo/display")
    export DISPLAY
    new_user_install "$BUILD/wine-prefix" "$prefix" "$BUILD/demo/unpacked/qrnbt350" "$company"
    say "the first form, an order with its lines, by the designer's wizard with the mouse"
    new_user_form "$ROOT/examples/company/first-form.txt" 最初の受注 60 || exit 1
    say "a form drawn by hand: three controls, bound by the property list, saved, run"
    new_user_form "$ROOT/examples/company/drawn-form.txt" 名前 180 || exit 1
    cp "$prefix"/drive_c/company/{first,drawn}-*.png "$company"
  ) || code=1
  WINEPREFIX=$prefix "$WINESERVER" -k || true
  kill "$xvfb" 2>/dev/null || true
  trap - EXIT
  [ "$code" -eq 0 ] || die "the new user did not come to a running form"
  say "pictures: build/demo/company/*.png"
}

# demo_made DIR DISPLAY-FILE: qrnform --new, then the script examples/company/made.txt before it.
demo_made() (
  cd "$1"
  DISPLAY=:$(cat "$2")
  export DISPLAY
  mkdir -p made
  "$WINE64" "$BUILD/windows/bin/qrnform.exe" --new . Orders --detail OrderLines -o made/orders.frm &&
    "$WINE64" "$BUILD/windows/bin/qrnform.exe" \
      --script "$(windows_path "$ROOT/examples/company/made.txt")" made/orders.frm
)

# demo_form DIR DISPLAY-FILE NAME [FORM...]: the script examples/company/NAME.txt before these forms
# of its folder, NAME.frm where none is given.
demo_form() (
  local script=$3 form forms=()
  cd "$1"
  DISPLAY=:$(cat "$2")
  export DISPLAY
  shift 3
  for form in "${@:-$script}"; do
    forms+=("$(windows_path "$ROOT/examples/company/$form.frm")")
  done
  "$WINE64" "$BUILD/windows/bin/qrnform.exe" \
    --script "$(windows_path "$ROOT/examples/company/$script.txt")" "${forms[@]}"
)
