# ./run package: one zip that a Windows machine needs. Sourced by ./run.

make_package() {
  local name=qrnbt350 stage=$BUILD/package/qrnbt350 bin=$BUILD/windows/bin file
  rm -rf "$BUILD/package"
  mkdir -p "$stage/examples"
  for file in qrnbt350.ocx w64btrv.dll lexbase.dll qrndata.exe qrnform.exe; do
    [ -f "$bin/$file" ] || continue
    cp "$bin/$file" "$stage/"
    x86_64-w64-mingw32-strip "$stage/$file"
  done
  cp -r examples/company "$stage/examples/"
  cp -r docs licenses "$stage/"
  sed 's/$/\r/' docs/windows.md >"$stage/README.txt"
  (cd "$BUILD/package" && zip -qr "$BUILD/$name.zip" "$name")
  say "build/$name.zip: $(du -h "$BUILD/$name.zip" | cut -f1)"
}
