# ./run package: one zip that a Windows machine needs. Sourced by ./run.

DEPS=${DEPS:-$ROOT/build/deps}
PACKAGE_PRODUCTS=(qrnbt350.ocx qrnbt350.manifest w64btrv.dll lexbase.dll qrndata.exe qrnform.exe)

# stage_package BIN STAGE: everything the zip holds, in the folder STAGE.
stage_package() {
  local bin=$1 stage=$2 file
  for file in "${PACKAGE_PRODUCTS[@]}"; do
    [ -f "$bin/$file" ] || die "$file has not been built: nothing was packed"
  done
  mkdir -p "$stage/examples"
  for file in "${PACKAGE_PRODUCTS[@]}"; do
    cp "$bin/$file" "$stage/"
    [[ $file == *.manifest ]] || x86_64-w64-mingw32-strip "$stage/$file" || die "could not strip $file"
  done
  cp -r "$DEPS/postgres-client" "$stage/server-client"
  cp -r "$ROOT"/{docs,include,licenses} "$stage/"
  cp -r "$ROOT"/examples/{company,flat,tables} "$stage/examples/"
  rm -r "$stage/examples/company/generator"
  cp "$ROOT/scripts/package/README.txt" "$stage/"
  cp "$ROOT/scripts/package/make-data.cmd" "$stage/examples/company/"
  # Lines end as Windows' own programs want them.
  find "$stage" -type f \( -name '*.md' -o -name '*.txt' -o -name '*.cmd' -o -name '*.h' -o -name '*.c' \) \
    -print0 | xargs -0 sed -i 's/\r*$/\r/'
}

make_package() {
  local name=qrnbt350 package=$BUILD/package
  rm -rf "$package" "$BUILD/$name.zip"
  stage_package "$BUILD/windows/bin" "$package/$name"
  (cd "$package" && zip -qr "$BUILD/$name.zip" "$name") || die "could not make build/$name.zip"
  say "build/$name.zip: $(du -h "$BUILD/$name.zip" | cut -f1)"
}
