# What `cpack` makes of an installation: a .deb and a .tar.gz; for Windows a zip of the program.
# Only what is installed is packed, so the tests need not be built for it: see `to_install`.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_PACKAGE_VENDOR tanrove)
set(CPACK_PACKAGE_CONTACT "the tanrove developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
"Reads one Pro Tools session (.ptx) and writes one REAPER project (.rpp), with
an account of what was carried, what was approximated and what was left out.
Neither Pro Tools nor any of its plug-ins has to be on the machine.")
set(CPACK_STRIP_FILES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_COMPONENTS_ALL program)
  set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
  set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
else()
  set(CPACK_GENERATOR "DEB;TGZ")
endif()
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

include(CPack)
