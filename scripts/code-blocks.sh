#!/usr/bin/env bash
# Writes the C++ blocks of a document whose first line is "// NAME" into files of that name.
#   scripts/code-blocks.sh DOCUMENT FOLDER
set -euo pipefail
awk -v folder="$2" '
  /^```cpp$/ { begins = 1; next }
  /^```$/ { if (file) close(file); file = ""; next }
  begins { file = folder "/" substr($0, 4); begins = 0; printf "" > file; next }
  file { print > file }
' "$1"
