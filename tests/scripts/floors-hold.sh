#!/usr/bin/env bash
# What the check of includes refuses and lets pass, on small trees.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
faults=0

# source_file FILE LINE: a file of that line, in the tree at hand.
source_file() {
  mkdir -p "$folder/$(dirname "$1")"
  printf '%s\n' "$2" >"$folder/$1"
}

# holds WANTED FILE LINE: the tree with that one file more. WANTED is what the check says of it,
# empty where it passes.
holds() {
  local said code=0
  rm -rf "${folder:?}"/*
  for header in include/btrieve.h src/platform/P.h src/core/C.h src/core/DbTypes.h src/com/K.h \
    src/ole/tables/O.h btrieve/keys/B.h btrieve/pages/G.h lexbase/L.h host/form/F.h host/script/S.h host/runner/R.h \
    tools/typelib/T.h; do
    source_file "$header" '#pragma once'
  done
  source_file "$2" "$3"
  said=$("$ROOT/scripts/floors.sh" "$folder") || code=$?
  [ "$said" = "$1" ] && [ "$code" -eq "$([ -z "$1" ] && echo 0 || echo 1)" ] && return
  echo "$2 with $3: said '$said' with code $code, not '$1'"
  faults=$((faults + 1))
}

holds '' src/core/X.cpp '#include "platform/P.h"'
holds '' src/core/X.cpp '#include "core/C.h"'
holds '' src/ole/X.h '#include "ole/tables/O.h"'
holds '' src/ole/X.h '#include "com/K.h"'
holds '' src/platform/X.h '#include "core/DbTypes.h"'
holds '' src/platform/X.h '#include "btrieve.h"'
holds '' host/form/X.h '#include "include/btrieve.h"'
holds '' host/runner/X.h '#include "host/script/S.h"'
holds '' host/runner/X.h '#include "com/K.h"'
holds '' btrieve/pages/X.h '#include "btrieve/keys/B.h"'
holds '' lexbase/X.cpp '#include "platform/P.h"'
holds '' tools/qrnform/X.cpp '#include "host/runner/R.h"'
holds '' tools/typelib/X.cpp '#include "typelib/T.h"'
holds '' src/platform/X_win.cpp '#include <windows.h>'
holds '' host/runner/X.cpp '#include <windows.h>'
holds 'src/platform/X.h:1: src/platform does not stand above src/core/C.h' \
  src/platform/X.h '#include "core/C.h"'
holds 'src/com/X.h:1: src/com does not stand above src/ole/tables/O.h' \
  src/com/X.h '#include "ole/tables/O.h"'
holds 'src/core/X.h:1: src/core does not stand above btrieve/keys/B.h' \
  src/core/X.h '#include "btrieve/keys/B.h"'
holds 'host/script/X.h:1: host/script does not stand above host/runner/R.h' \
  host/script/X.h '#include "host/runner/R.h"'
holds 'host/form/X.h:1: host/form does not stand above src/com/K.h' host/form/X.h '#include "com/K.h"'
holds 'btrieve/keys/X.h:1: btrieve/keys does not stand above src/platform/P.h' \
  btrieve/keys/X.h '#include "platform/P.h"'
holds 'btrieve/keys/X.h:1: btrieve/keys does not stand above btrieve/pages/G.h' \
  btrieve/keys/X.h '#include "btrieve/pages/G.h"'
holds 'btrieve/X.cpp: the folder has no floor' btrieve/X.cpp '#pragma once'
holds 'tools/typelib/X.h:1: tools/typelib does not stand above host/form/F.h' \
  tools/typelib/X.h '#include "host/form/F.h"'
holds 'include/X.h:1: include does not stand above src/platform/P.h' \
  include/X.h '#include "platform/P.h"'
holds 'src/core/X.h:1: there is no core/Nothing.h' src/core/X.h '#include "core/Nothing.h"'
holds 'src/nowhere/X.h: the folder has no floor' src/nowhere/X.h '#pragma once'
holds 'host/X.cpp: the folder has no floor' host/X.cpp '#pragma once'
holds 'host/form/X.cpp:1: a header of Windows where the code is portable' \
  host/form/X.cpp '#include <windows.h>'
holds './docs/x.md: not UTF-8' docs/x.md $'\xff'
[ "$faults" -eq 0 ]
