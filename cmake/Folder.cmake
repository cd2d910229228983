# One folder of src/ is one target that can include its own headers and those of the folders it
# links, and nothing else: each folder has an include root of its own that holds only itself, so
# an include against the direction of the road does not compile.
#
#   tanrove_folder(session SOURCES a.cpp b.cpp LINKS base)
function(tanrove_include_root name)
  set(root ${CMAKE_BINARY_DIR}/include_roots/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${name} SYMBOLIC)
  target_include_directories(tanrove_${name} PUBLIC $<BUILD_INTERFACE:${root}>)
endfunction()

function(tanrove_folder name)
  cmake_parse_arguments(ARG "SHARED" "" "SOURCES;LINKS" ${ARGN})
  list(TRANSFORM ARG_LINKS PREPEND tanrove_)
  if(ARG_SHARED)
    add_library(tanrove_${name} SHARED ${ARG_SOURCES})
    # It holds what it links: where it is installed it stands alone.
    list(TRANSFORM ARG_LINKS REPLACE "(.+)" "$<BUILD_INTERFACE:\\1>")
  else()
    add_library(tanrove_${name} STATIC ${ARG_SOURCES})
  endif()
  tanrove_include_root(${name})
  target_link_libraries(tanrove_${name} PUBLIC ${ARG_LINKS} PRIVATE tanrove_compile_rules)
endfunction()
