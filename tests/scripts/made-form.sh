#!/usr/bin/env bash
# The company's main form, and a form made from its dictionary in one command, before real keys and
# mouse; what the command says to a wrong line. Run by ./run test, which gives prefix and display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company
cp "$EXAMPLE"/*.frm "$EXAMPLE"/{main,made}.txt .
cp -r "$EXAMPLE/data/pictures" .
mkdir made

# new CODE TEXT ARG...: qrnform --new ends with CODE and says TEXT.
new() {
  local code=0 said
  said=$("${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --new "${@:3}" 2>&1) || code=$?
  [ "$code" -eq "$1" ] && [[ $said == *$2* ]] ||
    { echo "--new ${*:3}: code $code, said: $said"; exit 1; }
}

new 0 'made/orders.frm: フォームを作成しました。' . Orders --detail OrderLines -o made/orders.frm
new 2 'made/orders.frm: ファイルがあります。' . Orders -o made/orders.frm
new 0 'made/orders.frm: made' . Orders --detail OrderLines --lang en --force -o made/orders.frm
grep -q 'Find' made/orders.frm || { echo "not in English"; exit 1; }
new 2 'Order: 辞書にないテーブルです。' . Order -o made/a.frm
new 2 '辞書を読めません' made Orders -o made/a.frm
new 2 '--output is required' . Orders
new 2 '--new' . -o made/a.frm
[ ! -e made/a.frm ] || { echo "a refused form was made"; exit 1; }
new 0 'made' . Orders --detail OrderLines --force -o made/orders.frm
run made made/orders.frm
run main main.frm
made {main,made-first,made-found,made-missing,made-refused}.png
