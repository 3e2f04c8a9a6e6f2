# The house's own build words.
#
# house_library(NAME FOLDER PATH [USES lib...] [SHOWS lib...] [INNER subfolder...])
#   One folder below src/ is one library. Its sources are the folder's .cpp files and those of its
#   INNER folders. Its headers are reached as "PATH/Header.h", and only by libraries that link it:
#   each library has an include root of its own that holds nothing but its headers, so an include
#   that the links do not allow does not build. USES and SHOWS together list every library whose
#   headers the folder's files include. SHOWS lists those that its own public headers include: they
#   are linked publicly, so that whoever includes such a header finds them. All others are linked
#   privately. The headers of INNER folders have a root of their own, which nobody else reaches.
#
# house_test(NAME [SOURCES file...] [LINKS lib...])
#   One GoogleTest program, run by CTest under its name.

# Makes `root` an include root that holds a folder's headers and nothing else.
function(house_headers root folder)
  file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.h)
  file(MAKE_DIRECTORY ${root}/${folder})
  foreach(header IN LISTS headers)
    get_filename_component(file ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${folder}/${file} SYMBOLIC)
  endforeach()
endfunction()

function(house_library name)
  cmake_parse_arguments(ARG "" "FOLDER" "USES;SHOWS;INNER" ${ARGN})
  set(dir ${PROJECT_SOURCE_DIR}/src/${ARG_FOLDER})
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  house_headers(${root} ${ARG_FOLDER})
  set(inner_root ${PROJECT_BINARY_DIR}/include/${name}-inner)
  foreach(inner IN LISTS ARG_INNER)
    file(GLOB inner_sources CONFIGURE_DEPENDS ${dir}/${inner}/*.cpp)
    list(APPEND sources ${inner_sources})
    house_headers(${inner_root} ${ARG_FOLDER}/${inner})
  endforeach()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${root})
    if(ARG_INNER)
      target_include_directories(${name} PRIVATE ${inner_root})
    endif()
    target_link_libraries(${name} PUBLIC ${ARG_SHOWS} PRIVATE ${ARG_USES})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${root})
    target_link_libraries(${name} INTERFACE ${ARG_SHOWS})
  endif()
endfunction()

function(house_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE TEST_DATA_DIR="${TEST_DATA_DIR}")
  add_test(NAME ${name} COMMAND ${name})
endfunction()
