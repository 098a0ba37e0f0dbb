#!/usr/bin/env bash
# Scroll bars, pictures, a check box and option buttons before real keys and a real mouse: the
# example's products with their own script. Run by ./run test, which gives prefix and display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company Products
cp -r "$EXAMPLE"/{products.frm,products.txt,data/pictures} .
run products products.frm
made products.png products-icon.png products-metafile.png
