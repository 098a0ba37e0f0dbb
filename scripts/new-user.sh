# A new user's first two forms, made in the designer of the package in a Wine prefix where nothing is
# installed. Sourced by ./run and by a test, with the functions of scripts/wine.sh.

# new_user_install TEMPLATE PREFIX PACKAGE DATA: an empty prefix from the template, the unpacked
# package as C:\qrnbt350 with its module registered as its README.txt tells, the dictionary and data
# files of the folder DATA as C:\company. The prefix is the environment's from here on.
new_user_install() {
  clone_prefix "$1" "$2"
  wine_environment "$2"
  mkdir -p "$2/drive_c/qrnbt350" "$2/drive_c/company"
  cp -r "$3/." "$2/drive_c/qrnbt350"
  cp "$4"/*.ddf "$4"/*.btr "$2/drive_c/company"
  (cd "$2/drive_c/qrnbt350" && "$WINE64" regsvr32 /s qrnbt350.ocx)
}

# new_user_form SCRIPT MARK SECONDS: starts the designer in C:\company and plays the script before
# it. What passes from the start until the script prints MARK is told, and must not be longer.
new_user_form() {
  local script=$1 mark=$2 limit=$3 start=$EPOCHREALTIME said milliseconds=
  cd "$WINEPREFIX/drive_c/company"
  while IFS= read -r said; do
    said=${said%$'\r'}
    printf '%s\n' "$said"
    if [ "$said" = "$mark" ]; then
      milliseconds=$(((${EPOCHREALTIME/./} - ${start/./}) / 1000))
    fi
  done < <("$WINE64" 'C:\qrnbt350\qrnform.exe' --design --script "Z:${script//\//\\}" 2>&1 || echo "ended with $?")
  if [ -z "$milliseconds" ] || [[ $said == "ended with "* ]]; then
    echo "$(basename "$script" .txt): the form did not come to its first record"
    return 1
  fi
  printf '%s: first record after %d.%01d s\n' "$(basename "$script" .txt)" \
    $((milliseconds / 1000)) $((milliseconds % 1000 / 100))
  [ "$milliseconds" -le $((limit * 1000)) ] || { echo "that is more than $limit s"; return 1; }
}
