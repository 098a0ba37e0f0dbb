# How targets are made here: one warning level, one include root, sanitizers where asked for.

find_program(QRN_CCACHE ccache)
if(QRN_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER ${QRN_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${QRN_CCACHE})
endif()

add_library(qrn_options INTERFACE)
target_compile_options(qrn_options INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Werror)
# g++ 12 sees overlaps and overflows in its own optimised string and vector code that are not there.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(qrn_options INTERFACE -Wno-restrict -Wno-stringop-overflow
                         -Wno-array-bounds)
endif()
# Includes are written from include/ ("btrieve.h"), from src/ ("fields/FieldText.h") or from the root
# ("btrieve/session/Session.h").
target_include_directories(qrn_options INTERFACE ${CMAKE_SOURCE_DIR}/include
                           ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR})
if(WIN32)
  target_compile_definitions(qrn_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX
                             _WIN32_WINNT=0x0601 STRICT)
  # Interfaces of COM have no virtual destructor: nobody deletes through them.
  # And where sources are compiled together, the compiler takes them for headers, whose classes
  # should have no members of unnamed types.
  target_compile_options(qrn_options INTERFACE -gdwarf-4 -Wno-non-virtual-dtor
                         -Wno-subobject-linkage)
endif()

if(QRN_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer -O1 -g1)
  add_link_options(-fsanitize=address,undefined)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
if(QRN_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# qrn_library(NAME [FOLDERS folder...] [DEPENDS lib...]): a static library of every source of the
# current folder and of those folders in it.
# Sources that end in _win.cpp or _posix.cpp are the halves of a seam; each build takes its own.
function(qrn_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;DEPENDS" ${ARGN})
  list(TRANSFORM ARG_FOLDERS APPEND "/*.cpp")
  file(GLOB sources CONFIGURE_DEPENDS *.cpp ${ARG_FOLDERS})
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "_posix\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "_win\\.cpp$")
  endif()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC qrn_options ${ARG_DEPENDS})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE qrn_options ${ARG_DEPENDS})
  endif()
endfunction()
