#!/usr/bin/env bash
# Includes point downwards only: reads every source of the folders below and fails on an include
# that points up, sideways or into a house that its folder does not take from; on a folder or a file
# that is not known; on Windows' headers where the code is portable; on sources that are not UTF-8.
#   scripts/floors.sh [ROOT]   the tree to check (default: this one)
set -u
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}" || exit 1

# A folder, its floor in its own house (the first part of its name), and what it takes of other
# houses. It may include what lies on a lower floor of its house, itself, and include/. A slash at
# the end: with every folder in it, as one. Folders that are not here are refused.
FLOORS='
include            0
src/resources      0
src/platform       1
src/fields         2
src/core           3
src/extended       4
src/com            5
src/ole/           6
src/binding/       7
src/controls/      8
src/grid/model     9
src/grid/data      10
src/grid/layout    10
src/grid/          11
src/design/        12
btrieve/sqlite     1
btrieve/system     2
btrieve/keys       3
btrieve/locks      3
btrieve/scans      4
btrieve/pages      5
btrieve/storage    6
btrieve/legacy     7
btrieve/server     7
btrieve/files      7
btrieve/session    8
btrieve/operations 9
lexbase            1   src/platform
host/form          1   src/platform
host/designer/document 2 src/platform
host/designer/model 3  src/platform
host/designer/classes 4 src/com src/ole
host/newform       2   src/platform src/fields src/core
host/container     2   src/com src/ole
host/script        3   src/com
host/runner/       4   src/com src/ole
host/designer/panes/ 5 src/com src/ole
host/designer/wizard 5 src/com src/ole src/platform src/core src/fields
host/designer/window/ 6 src/com src/ole src/platform src/core src/fields
host/user          7   src/com src/ole
tools/typelib      1   src/com src/ole src/binding
tools/qrndata/     1   src/platform src/fields src/core src/extended btrieve lexbase
tools/qrnform      1   src/platform src/com src/ole host
examples/          1   tools/qrndata
'
# What stands above its floor and may be included from everywhere, and what the build brings.
FREE='src/core/DbTypes.h sqlite3.c'
# Where <windows.h> and its like stand in halves for Windows (*_win.*) alone.
PORTABLE='include src/platform src/fields src/core src/extended src/grid/model
  src/grid/data src/grid/layout btrieve lexbase host/form host/newform
  host/designer/document host/designer/model'

houses=()
for house in include src btrieve lexbase host tools examples; do [ -d $house ] && houses+=("$house"); done
[ ${#houses[@]} -gt 0 ] || { echo "there are no sources in $PWD"; exit 1; }
mapfile -t sources < <(find "${houses[@]}" -type f \( -name '*.h' -o -name '*.cpp' -o -name '*.c' \
  -o -name '*.inc' \))
[ ${#sources[@]} -gt 0 ] || { echo "there are no sources in $PWD"; exit 1; }

check_includes() {
  printf '%s\n' "${sources[@]}" | awk -v floors="$FLOORS" -v free="$FREE" -v portable="$PORTABLE" '
    function folder(path) { return path ~ /\// ? substr(path, 1, match(path, /\/[^\/]*$/) - 1) : "" }
    function house(path) { return substr(path, 1, index(path "/", "/") - 1) }
    function lies_in(path, outer) { return index(path "/", outer "/") == 1 }
    # The row of the table that a folder belongs to; empty if there is none.
    function row(path) {
      if (path in floor) return path
      for (; path != ""; path = folder(path)) if (path "/" in floor) return path "/"
      return ""
    }
    function any_holds(list, path,   parts, count, i) {
      count = split(list, parts, " ")
      for (i = 1; i <= count; i++) if (lies_in(path, parts[i])) return 1
      return 0
    }
    function resolved(from, target,   roots, count, i) {
      count = split("|src/|include/|tools/|" folder(from) "/", roots, "|")
      for (i = 1; i <= count; i++) if (roots[i] target in known) return roots[i] target
      return target
    }
    function fault(text) { print at ": " text; faults++ }
    function check(from, target,   to, own, other) {
      to = resolved(from, target)
      if (any_holds(free, to)) return
      if (!(to in known)) return fault("there is no " target)
      own = row(folder(from)); other = row(folder(to))
      if (own == other || other == "include") return
      if (house(own) == house(other) && floor[other] < floor[own]) return
      if (house(own) != house(other) && any_holds(takes[own], folder(to))) return
      fault(folder(from) " does not stand above " to)
    }
    BEGIN {
      rows = split(floors, lines, "\n")
      for (i = 1; i <= rows; i++) {
        if (split(lines[i], part, " ") < 2) continue
        floor[part[1]] = part[2] + 0
        takes[part[1]] = lines[i]; sub(/^[^ ]+ +[0-9]+ */, "", takes[part[1]])
      }
    }
    { known[$0] = 1; files[NR] = $0 }
    END {
      for (i = 1; i <= NR; i++) {
        file = at = files[i]
        if (row(folder(file)) == "") { fault("the folder has no floor"); continue }
        number = 0
        while ((getline line < file) > 0) {
          at = file ":" ++number
          if (line !~ /^#[ \t]*include/) continue
          if (line ~ /<(windows|oleauto|ole2|objbase)\.h>/ && any_holds(portable, folder(file)) &&
              file !~ /_win\./) fault("a header of Windows where the code is portable")
          if (match(line, /"[^"]+"/)) check(file, substr(line, RSTART + 1, RLENGTH - 2))
        }
        close(file)
      }
      exit faults > 0
    }'
}

check_texts() {
  find . -path ./build -prune -o -path ./.git -prune -o -type f \
    \( -name '*.h' -o -name '*.cpp' -o -name '*.rc' -o -name '*.inc' -o -name '*.md' -o \
    -name '*.sh' \) -print0 | LC_ALL=C.UTF-8 xargs -0 grep -laxv '.*' | sed 's/$/: not UTF-8/' | grep .
}

failed=0
check_includes || failed=1
if check_texts; then failed=1; fi
exit $failed
