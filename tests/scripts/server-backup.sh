#!/usr/bin/env bash
# The server's own tools on the example's data: what they saved serves the same links from another
# database, and a link that was lost is written anew. As docs/server.md tells. Run by ./run test.
[ -n "${QRN_SERVER:-}" ] || exec "$(dirname "${BASH_SOURCE[0]}")/../../scripts/server.sh" "$0" "$@"
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company
rows() {
  local table
  for table in "$EXAMPLE"/data/*.csv; do
    "$DATA_TOOL" export "$folder" "$(basename "$table" .csv)"
  done
}
work=$(mktemp -d)
trap 'rm -rf "$folder" "$work"' EXIT
rows >"$work/before"
"$DATA_TOOL" move "$folder" --server "$QRN_SERVER" --schema company >/dev/null
"$DATA_TOOL" publish "$folder" >/dev/null

pg_dump -Fc -n company -n company_view -d "$QRN_SERVER" -f "$work/dump"
psql -q -d "$QRN_SERVER" -c 'CREATE DATABASE again'
pg_restore -d "${QRN_SERVER/dbname=postgres/dbname=again}" "$work/dump"
psql -q -d "$QRN_SERVER" -c 'SET client_min_messages = warning; DROP SCHEMA company CASCADE; DROP SCHEMA company_view CASCADE'
! "$DATA_TOOL" check "$folder" >/dev/null 2>&1 || { echo "the links lead nowhere, and nobody minds"; exit 1; }
sed -i "s/dbname='postgres'/dbname='again'/" ./*.btr ./*.ddf
"$DATA_TOOL" check "$folder" >/dev/null
rows | diff -q - "$work/before"

# Positions and keys go on where they were.
head -1 "$EXAMPLE/data/Staff.csv" >"$work/more"
sed -n 2p "$EXAMPLE/data/Staff.csv" | sed 's/^[^,]*/64999/' >>"$work/more"
"$DATA_TOOL" import "$folder" Staff "$work/more" >/dev/null
"$DATA_TOOL" check "$folder" >/dev/null
"$DATA_TOOL" export "$folder" Staff | grep -q '^64999,'

lost=$(ls ./*.btr | head -1)
sed "s/^table .*/table = $(basename "${lost,,}" .btr)_btr/" file.ddf >"$lost"
"$DATA_TOOL" check "$folder" >/dev/null
"$DATA_TOOL" move "$folder" --back >/dev/null
rows | grep -v '^64999,' | diff -q - "$work/before"
