# What `cpack` makes of the build of preset `packages`: four Debian packages. scripts/package calls it and looks at them.
#
#   libmelkarcommon0.1   the shared library, under the name of its soname, so that two versions may stand side by side
#   libmelkarcommon-dev  headers, the static library, CMake and pkg-config files
#   libmelkarcommon-doc  documents, pages and samples
#   melkar               the command
#
# Debian's rules beyond the files themselves: a list of changes and the licence in each package, manual pages packed, no run path, and what the
# library loads only when it is needed (printing, pictures) as a recommendation.
set(library libmelkarcommon${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(version ${PROJECT_VERSION})

find_program(GZIP gzip REQUIRED)
find_package(Git QUIET)
# Packages of one commit are the same whoever makes them.
execute_process(COMMAND ${GIT_EXECUTABLE} log -1 --format=%cD WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT date)
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
endif()

set(CPACK_DEBIAN_PACKAGE_MAINTAINER "MelkarCommon contributors <contributors@melkarcommon.invalid>")
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian-changelog.in debian/changelog @ONLY)
# LICENSE as Debian writes it: a blank before each line, a full stop where there is none.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
string(REGEX REPLACE "^.*(Copyright [^\n]*)\n\n" "" licence "${licence}")
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REGEX REPLACE "\n$" "" licence "${licence}")
string(REPLACE "\n" "\n " licence "${licence}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian-copyright.in debian/copyright @ONLY)
function(pack file result)
  execute_process(COMMAND ${GZIP} -9nc ${file} OUTPUT_FILE ${result} COMMAND_ERROR_IS_FATAL ANY)
endfunction()
pack(${CMAKE_CURRENT_BINARY_DIR}/debian/changelog ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.gz)

# debian_package(COMPONENT NAME TITLE TEXT): what each has, and what it is.
function(debian_package component name title text)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.gz ${CMAKE_CURRENT_BINARY_DIR}/debian/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${title}\n${about}\n.\n${text}" PARENT_SCOPE)
endfunction()
set(about "MelkarCommon draws health charts (steps, energy, the activity of a day
and of a week, gauges, quadrants and free panels) onto pixels, PDF and SVG,
and prints reports of them. Every label, colour and scale is taken from a
profile file.")
debian_package(runtime ${library} "health charts and reports" "This package has the shared library.")
debian_package(dev libmelkarcommon-dev "health charts and reports - development files"
  "This package has what programs are built with.")
debian_package(doc libmelkarcommon-doc "health charts and reports - documents and samples"
  "This package has documents, and sample profiles, data files and programs.")
debian_package(command melkar "health charts and reports from the command line"
  "This package has the command that draws, checks, tells and prints them.")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME melkarcommon)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each has its own
set(CPACK_PACKAGE_VENDOR "MelkarCommon")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/out/packages)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime dev doc command)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The command finds the library that is packed beside it.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# The system learns of a library by a trigger, which CPack doesn't know; it adds scripts that call ldconfig, which do no harm.
set(control ${CMAKE_CURRENT_BINARY_DIR}/debian)
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
file(WRITE ${control}/shlibs
  "libMelkarCommon ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR} ${library} (>= ${version})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/triggers ${control}/shlibs)
if(MELKAR_PACKS_RELOCATIONS) # which dpkg-shlibdeps doesn't see
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6 (>= 2.36)")
endif()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "libcups2, libgdk-pixbuf-2.0-0, libwebp7")
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${library} (= ${version})")
# Who links the static library links these as well.
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS
  "libcairo2-dev, libpango1.0-dev, libfontconfig-dev, libfreetype-dev, libharfbuzz-dev, libdeflate-dev, pkg-config")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS libmelkarcommon-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOC_PACKAGE_SHLIBDEPS OFF)
# The samples' looks ask for them.
set(CPACK_DEBIAN_DOC_PACKAGE_SUGGESTS "fonts-inter, fonts-ipafont-gothic")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${library} (= ${version})")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS libmelkarcommon-doc)
include(CPack)
