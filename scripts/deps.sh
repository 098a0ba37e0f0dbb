# Sources of other people's libraries that no Debian -dev package offers to both builds.
# Sourced by ./run.

SQLITE_PACKAGE=better-sqlite3@12.2.0  # carries the SQLite 3.50.2 amalgamation
SQLITE_C_SHA512=2bc9d479e790cc689b214772ddba79cc8572b3c11c984d57cd79322c9cb15b36553828891466cf5401a2d0c97aa6adf69cfbe284820256c6d5fed36ac26d9a61
SQLITE_H_SHA512=f1980e8a2e60aa7609eb9e3574e83fd625eb3c76b459660beed21415a2e5e48f9458674bea21ddc3b4bbaf1661bfd84505845177d29aee104cc0c69f55866923

fetch_sqlite() {
  local dir=$DEPS/sqlite
  [ -f "$dir/sqlite3.c" ] && return
  say "fetching SQLite"
  local work
  work=$(mktemp -d)
  (cd "$work" && npm pack --silent "$SQLITE_PACKAGE" >/dev/null && tar xzf ./*.tgz) ||
    die "could not fetch $SQLITE_PACKAGE: check the network and npm's settings, then try again"
  printf '%s  %s\n' "$SQLITE_C_SHA512" "$work/package/deps/sqlite3/sqlite3.c" \
    "$SQLITE_H_SHA512" "$work/package/deps/sqlite3/sqlite3.h" | sha512sum --check --quiet ||
    die "the SQLite source that came is not the pinned one: nothing was kept"
  mkdir -p "$dir"
  cp "$work/package/deps/sqlite3/"sqlite3.[ch] "$dir/"
  rm -rf "$work"
}

# Headers of header-only libraries, copied so that the cross build sees no other system header.
copy_headers() {
  [ -f "$DEPS/include/toml++/toml.h" ] && return
  mkdir -p "$DEPS/include"
  cp -r /usr/include/CLI /usr/include/toml++ "$DEPS/include/"
}
