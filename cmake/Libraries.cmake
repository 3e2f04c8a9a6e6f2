# Functions that build the project's libraries and tests.
#
# keystrand_library(NAME FOLDER PATH [USES lib...] [SHOWS lib...] [INNER subfolder...] [HEADERS header...])
#   Makes one library of the folder PATH below the calling file, from its .cpp files (without main.cpp)
#   and those of its INNER folders.
#   Other files include its headers as "PATH/Header.h". Each library has an include root of its own
#   that holds nothing but its headers, so an include of another library's header fails to compile
#   unless that library is linked. USES and SHOWS together list every library whose headers the
#   folder's files include. SHOWS lists those that its own public headers include: they
#   are linked publicly, so that files that include such a header find them too. All others are
#   linked privately. Only the library itself can include the headers of its INNER folders.
#   HEADERS are precompiled for this library instead of the common ones.
#
# keystrand_test(NAME [SOURCES file...] [LINKS lib...])
#   Makes one GoogleTest program, which CTest runs under its name.

# Headers that most sources include, compiled once for all libraries and once for all tests. The
# linters read each source without them, so they fail where one doesn't include what it needs.
file(WRITE ${PROJECT_BINARY_DIR}/headers.cpp "")
set(common_headers <algorithm> <cstdint> <functional> <map> <memory> <optional> <span> <string>
  <string_view> <utility> <vector>)
add_library(library_headers OBJECT ${PROJECT_BINARY_DIR}/headers.cpp)
target_precompile_headers(library_headers PRIVATE ${common_headers})

# Tests are compiled without optimisation and with line numbers only, since compiling their many
# expectations takes longer than running them; _FORTIFY_SOURCE needs optimisation. Qt requires -fPIC,
# and tests without Qt get it too, since all tests share one precompiled header.
set(test_options -O0 -g1 -U_FORTIFY_SOURCE -fPIC)
function(keystrand_test_headers)
  add_library(test_headers OBJECT ${PROJECT_BINARY_DIR}/headers.cpp)
  target_compile_options(test_headers PRIVATE ${test_options})
  target_link_libraries(test_headers PRIVATE GTest::gmock)
  target_precompile_headers(test_headers PRIVATE ${common_headers} <gmock/gmock.h> <gtest/gtest.h>)
endfunction()

# Makes `root` an include root with links to a folder's headers.
function(keystrand_headers root folder)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h)
  file(MAKE_DIRECTORY ${root}/${folder})
  foreach(header IN LISTS headers)
    get_filename_component(file ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${folder}/${file} SYMBOLIC)
  endforeach()
endfunction()

function(keystrand_library name)
  cmake_parse_arguments(ARG "" "FOLDER" "USES;SHOWS;INNER;HEADERS" ${ARGN})
  set(dir ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_FOLDER})
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  keystrand_headers(${root} ${ARG_FOLDER})
  set(inner_root ${PROJECT_BINARY_DIR}/include/${name}-inner)
  foreach(inner IN LISTS ARG_INNER)
    file(GLOB inner_sources CONFIGURE_DEPENDS ${dir}/${inner}/*.cpp)
    list(APPEND sources ${inner_sources})
    keystrand_headers(${inner_root} ${ARG_FOLDER}/${inner})
  endforeach()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${root})
    if(ARG_INNER)
      target_include_directories(${name} PRIVATE ${inner_root})
    endif()
    target_link_libraries(${name} PUBLIC ${ARG_SHOWS} PRIVATE ${ARG_USES})
    if(ARG_HEADERS)
      target_precompile_headers(${name} PRIVATE ${common_headers} ${ARG_HEADERS})
    else()
      target_precompile_headers(${name} REUSE_FROM library_headers)
    endif()
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${root})
    target_link_libraries(${name} INTERFACE ${ARG_SHOWS})
  endif()
endfunction()

function(keystrand_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock GTest::gtest_main)
  target_compile_options(${name} PRIVATE ${test_options})
  target_precompile_headers(${name} REUSE_FROM test_headers)
  add_test(NAME ${name} COMMAND ${name})
endfunction()
