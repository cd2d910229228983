# What `cmake --install` puts where: the program, its library, the archive and the headers for
# programs that convert in their own process, a CMake package, a pkg-config file, the pages. Nothing
# of it names the prefix, so the tree can be moved.
include(CMakePackageConfigHelpers)

# What stands apart from the program's own: a zip for Windows holds the program alone.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)
if(WIN32)
  set(CMAKE_INSTALL_BINDIR .)
  set(CMAKE_INSTALL_DOCDIR .)
endif()

# The public headers stand side by side in one folder and include each other by it.
set(public_headers
  base/printf_check.hpp
  base/version.hpp
  ptformat/ptformat.hpp
  run/console.hpp
  run/convert_session.hpp
  run/run_options.hpp)

function(tanrove_public_header path)
  set(source ${PROJECT_SOURCE_DIR}/src/${path})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} text)
  string(REGEX MATCHALL "#include \"[^\"]*\"" included "${text}")
  foreach(line IN LISTS included)
    string(REGEX REPLACE "#include \"(.*)\"" "\\1" name "${line}")
    if(NOT name IN_LIST public_headers)
      message(FATAL_ERROR "${path} is public, but includes ${name}, which is not")
    endif()
  endforeach()
  string(REGEX REPLACE "#include \"[a-z]+/" "#include \"tanrove/" text "${text}")
  get_filename_component(name ${path} NAME)
  file(CONFIGURE OUTPUT public_headers/tanrove/${name} CONTENT "${text}" @ONLY)
endfunction()

foreach(header IN LISTS public_headers)
  tanrove_public_header(${header})
endforeach()

# Where a target's own name would say its project twice.
set_target_properties(tanrove_ptformat PROPERTIES EXPORT_NAME ptformat)

install(TARGETS tanrove RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
install(TARGETS tanrove_ptformat tanrove_library EXPORT tanroveTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/public_headers/tanrove
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES README.md CHANGELOG.md docs/account.md docs/teaching.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/tanrove)
install(EXPORT tanroveTargets NAMESPACE tanrove:: DESTINATION ${package_folder})
configure_package_config_file(cmake/tanroveConfig.cmake.in tanroveConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(tanroveConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tanroveConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/tanroveConfigVersion.cmake DESTINATION ${package_folder})

file(RELATIVE_PATH prefix_from_pkgconfig
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/tanrove.pc.in tanrove.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tanrove.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# All that an installation takes, for those who do not build the tests.
add_custom_target(to_install)
add_dependencies(to_install tanrove tanrove_ptformat tanrove_library)
if(TARGET pages)
  add_dependencies(to_install pages)
endif()
