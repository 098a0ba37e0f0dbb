#!/usr/bin/env bash
# ./run form takes files from where the user stands, options on either side of the form, and looks at
# the files before it installs or builds anything. Run by ./run test.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/得意 先"
cd "$folder/得意 先"
touch 表.frm other.frm steps.txt

# refused CODE WORDS ARG...: ends with CODE and says WORDS in its first line.
refused() {
  local wanted=$1 words=$2 code=0
  shift 2
  DISPLAY='' "$ROOT/run" form "$@" >"$folder/out" 2>"$folder/err" || code=$?
  if [ "$code" -ne "$wanted" ] || ! head -1 "$folder/err" | grep -qF -- "$words"; then
    echo "./run form $*: code $code, $(head -1 "$folder/err")"
    exit 1
  fi
}

refused 1 'there is no file nosuch.frm' nosuch.frm
refused 1 'there is no file nosuch.frm' --design 表.frm nosuch.frm
refused 1 'there is no file no.txt' 表.frm --script no.txt
refused 1 'there is no folder for the picture no/card.png' 表.frm --shot=no/card.png
refused 2 '--shot needs a file' 表.frm --shot
refused 2 'form needs the file of a form' --trace

# told WANTED ARG...: what qrnform is given, between angle brackets, for the arguments.
told() {
  local wanted=$1 given
  shift
  given=$(
    say() { :; }
    die() { printf '%s\n' "$*" >&2; exit 1; }
    misused() { die "$@"; }
    cd "$ROOT"
    . scripts/form.sh
    read_form_line "$@"
    printf '<%s>' "${FORM_LINE[@]}"
  )
  [ "$given" = "$wanted" ] || { echo "form $*: $given"; exit 1; }
}

here="Z:${folder//\//\\}\\得意 先"
told "<--design><$here\\表.frm>" --design 表.frm
told '<--design>' --design
told "<$here\\表.frm><--shot><$here\\my card.png>" 表.frm --shot 'my card.png'
told "<--script><$here\\steps.txt><$here\\表.frm><$here\\other.frm>" \
  --script=steps.txt ./表.frm ../得意\ 先/other.frm
told "<$here\\表.frm><--trace>" "$folder/得意 先/表.frm" --trace
told '<C:\forms\a.frm>' 'C:\forms\a.frm'
