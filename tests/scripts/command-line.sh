#!/usr/bin/env bash
# ./run refuses what it does not understand in a sentence, before it installs or builds anything; the
# checks of the sources fail where they find none. Run by ./run test.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# refused WORDS ARG...: ends with 2 and says WORDS in its first line.
refused() {
  local words=$1 code=0
  shift
  "$ROOT/run" "$@" >"$folder/out" 2>"$folder/err" || code=$?
  if [ "$code" -ne 2 ] || ! head -1 "$folder/err" | grep -qF -- "$words"; then
    echo "./run $*: code $code, $(head -1 "$folder/err")"
    exit 1
  fi
}

refused 'a verb is missing'
refused 'there is no verb "tset"' tset
refused 'there is no verb "tset"' tset now
refused 'demo does not take "twice"' demo twice
refused 'form needs the file' form
refused 'not "abc"' fuzz abc
refused 'not "0"' fuzz 0
refused 'fuzz does not take "6"' fuzz 5 6
"$ROOT/run" --help | grep -q '^usage: ./run VERB'

mkdir "$folder/scripts"
cp "$ROOT"/scripts/{floors,format}.sh "$folder/scripts"
for check in floors format; do
  if "$folder/scripts/$check.sh" >"$folder/out" 2>&1; then
    echo "$check.sh passes where there is nothing to check"
    exit 1
  fi
done
