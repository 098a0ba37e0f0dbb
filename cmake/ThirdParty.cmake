# Libraries that are not ours. `./run` puts their sources into QRN_DEPS_DIR and checks the digests.

set(QRN_SQLITE_DIR ${QRN_DEPS_DIR}/sqlite)
if(NOT EXISTS ${QRN_SQLITE_DIR}/sqlite3.c)
  message(FATAL_ERROR "SQLite is not in ${QRN_SQLITE_DIR}: run `./run deps` first")
endif()

# SQLite: the storage of btrieve/, and databases that the data tool writes. Threads are serialised above it.
add_library(sqlite3 STATIC ${CMAKE_SOURCE_DIR}/btrieve/sqlite/SqliteWithPages.c)
target_include_directories(sqlite3 SYSTEM PUBLIC ${QRN_SQLITE_DIR})
target_compile_definitions(sqlite3 PUBLIC
  SQLITE_THREADSAFE=2 SQLITE_DQS=0 SQLITE_DEFAULT_MEMSTATUS=0 SQLITE_LIKE_DOESNT_MATCH_BLOBS
  SQLITE_MAX_EXPR_DEPTH=0 SQLITE_OMIT_DEPRECATED SQLITE_OMIT_PROGRESS_CALLBACK
  SQLITE_OMIT_SHARED_CACHE SQLITE_OMIT_LOAD_EXTENSION SQLITE_OMIT_AUTOINIT SQLITE_USE_ALLOCA=1
  SQLITE_OMIT_JSON SQLITE_TEMP_STORE=3)
if(WIN32)
  # Plain file reads: overlapped ones cost forty times as much under Wine.
  target_compile_definitions(sqlite3 PUBLIC SQLITE_WIN32_NO_OVERLAPPED=1)
endif()
# Not ours to sanitize, and three times as slow to build when it is.
target_compile_options(sqlite3 PRIVATE -w -O2 -g0 -fno-sanitize=all)

# libxlsxwriter, over zlib. Its zip and temporary-file parts come with it.
set(QRN_XLSXWRITER_DIR ${QRN_DEPS_DIR}/xlsxwriter)
if(NOT EXISTS ${QRN_XLSXWRITER_DIR}/include/xlsxwriter.h)
  message(FATAL_ERROR "libxlsxwriter is not in ${QRN_XLSXWRITER_DIR}: run `./run deps` first")
endif()
file(GLOB QRN_XLSXWRITER_SOURCES ${QRN_XLSXWRITER_DIR}/src/*.c)
set(QRN_XLSXWRITER_PARTS ${QRN_XLSXWRITER_DIR}/third_party)
list(APPEND QRN_XLSXWRITER_SOURCES
  ${QRN_XLSXWRITER_PARTS}/minizip/ioapi.c ${QRN_XLSXWRITER_PARTS}/minizip/zip.c
  ${QRN_XLSXWRITER_PARTS}/tmpfileplus/tmpfileplus.c ${QRN_XLSXWRITER_PARTS}/md5/md5.c)
if(WIN32)
  list(APPEND QRN_XLSXWRITER_SOURCES ${QRN_XLSXWRITER_PARTS}/minizip/iowin32.c)
  find_library(QRN_ZLIB libz.a REQUIRED)
else()
  find_library(QRN_ZLIB z REQUIRED)
endif()
add_library(xlsxwriter STATIC ${QRN_XLSXWRITER_SOURCES})
set_target_properties(xlsxwriter PROPERTIES UNITY_BUILD OFF)
target_include_directories(xlsxwriter SYSTEM PUBLIC ${QRN_XLSXWRITER_DIR}/include)
target_compile_options(xlsxwriter PRIVATE -w -O2 -g0 -fno-sanitize=all)
target_link_libraries(xlsxwriter PUBLIC ${QRN_ZLIB})

# CLI11 and toml++, headers only.
add_library(qrn_cli INTERFACE)
target_include_directories(qrn_cli SYSTEM INTERFACE ${QRN_DEPS_DIR}/include)

if(QRN_TESTS)
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
