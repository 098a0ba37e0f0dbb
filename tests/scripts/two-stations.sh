#!/usr/bin/env bash
# Two stations on one server: see scripts/two-stations.sh. Run by ./run test, which gives prefix and
# display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company
"$ROOT/scripts/two-stations.sh" "$folder"
made "$folder/two-stations.png"
