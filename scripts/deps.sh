# Sources of other people's libraries that no Debian -dev package offers to both builds.
# Sourced by ./run.

DEPS=${DEPS:-$ROOT/build/deps}
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

XLSXWRITER=libxlsxwriter XLSXWRITER_VERSION=1.1.4
XLSXWRITER_SHA512=fad36f7882fcb21b87e13cf603022cfad3f14e6f955a06e2771712facd0fe12f83f4d1655dc1a744724bda1ac83af7e7bf1393457c5507d8983f63002ab294b5

# source_lists FOLDER: the system's package lists as lists of source packages, which it need not have.
source_lists() {
  local file
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] && sed -E 's/^Types:.*/Types: deb-src/' "$file" >"$1/${file##*/}"
  done
  cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
    sed -nE 's/^deb /deb-src /p' >"$1/lines.list"
}

# fetch_source PACKAGE=VERSION FOLDER: a Debian source package's files, with lists of our own.
fetch_source() {
  local apt=$2/apt
  mkdir -p "$apt"/{sources,lists/partial,cache/archives/partial}
  source_lists "$apt/sources"
  local options=(-qq -o "Dir::Etc::sourcelist=/dev/null" -o "Dir::Etc::sourceparts=$apt/sources"
    -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt/cache" -o "APT::Sandbox::User=")
  (cd "$2" && apt-get "${options[@]}" update && apt-get "${options[@]}" source --download-only "$1") \
    >"$2/log" 2>&1
}

fetch_xlsxwriter() {
  local dir=$DEPS/xlsxwriter
  [ -f "$dir/include/xlsxwriter.h" ] && return
  say "fetching libxlsxwriter"
  local work
  work=$(mktemp -d)
  fetch_source "$XLSXWRITER" "$work" ||
    { cat "$work/log" >&2; die "could not fetch $XLSXWRITER: check the network, then try again"; }
  local archive=$work/${XLSXWRITER}_$XLSXWRITER_VERSION.orig.tar.gz
  printf '%s  %s\n' "$XLSXWRITER_SHA512" "$archive" | sha512sum --check --quiet ||
    die "the libxlsxwriter source that came is not the pinned one: nothing was kept"
  mkdir "$work/source"
  tar xzf "$archive" -C "$work/source" --strip-components=1
  mkdir -p "$dir"
  cp -r "$work/source/"{src,third_party,License.txt} "$dir/"
  cp -r "$work/source/include" "$dir/"  # last: it tells that all is there
  rm -rf "$work"
}

# Headers of header-only libraries, copied so that the cross build sees no other system header.
copy_headers() {
  [ -f "$DEPS/include/toml++/toml.h" ] && return
  mkdir -p "$DEPS/include"
  cp -r /usr/include/CLI /usr/include/toml++ "$DEPS/include/"
}

# The database server's client library for Windows with its companions, for the package.
SERVER_CLIENT_PACKAGE=@embedded-postgres/windows-x64@18.4.0-beta.17
SERVER_CLIENT_FILES=(libcrypto-3-x64.dll libiconv-2.dll libintl-9.dll libpq.dll libssl-3-x64.dll
  libwinpthread-1.dll)
# Of the lines that sha512sum prints for them, in this order.
SERVER_CLIENT_SHA512=c606b331d2657b9fb74fdc0b041a339737a7cf4484da4fbfe7ff0a97dfb2d5bd4ce5493ffcea7853b8a19ca6b870bfe74da843f0394fbbeba066f9739924316f

fetch_server_client() {
  local dir=$DEPS/postgres-client work
  [ -f "$dir/libpq.dll" ] && return
  say "fetching the server's client library for Windows"
  work=$(mktemp -d)
  (cd "$work" && npm pack --silent "$SERVER_CLIENT_PACKAGE" >/dev/null && tar xzf ./*.tgz) ||
    die "could not fetch $SERVER_CLIENT_PACKAGE: check the network and npm's settings, then try again"
  (cd "$work/package/native/bin" && sha512sum "${SERVER_CLIENT_FILES[@]}" | sha512sum) |
    grep -q "^$SERVER_CLIENT_SHA512 " ||
    die "the client library that came is not the pinned one: nothing was kept"
  mkdir -p "$dir"
  (cd "$work/package/native/bin" && cp "${SERVER_CLIENT_FILES[@]}" "$dir/")
  rm -rf "$work"
}

# give_server_client FOLDER: for the programs that stand there.
give_server_client() {
  mkdir -p "$1/server-client"
  cp -u "$DEPS"/postgres-client/*.dll "$1/server-client/"
}
