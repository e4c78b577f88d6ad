# The Debian package: `cpack -G DEB` in a Release build tree (scripts/build-deb.sh) packs what
# `cmake --install` puts in place under /usr. Its dependencies are worked out from the libraries
# the programs link (dpkg-shlibdeps, of dpkg-dev), so they follow the build machine's Qt and GDAL.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME arborex)
set(CPACK_PACKAGE_VENDOR "Arborex")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "harvest planning for a small forest tenure")
# The summary is the description's first line; this is the rest.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Arborex plans the harvest of a small forest tenure. A project lists the
tenure's stands with their inventory; Arborex drives the VDYP and TIPSY growth
models for yield curves (stand-ins of both are included), works out harvest
ages, simulates harvesting year by year and searches for the highest rate the
land base can sustain. It writes the harvest schedule, delimited tables, graphs
and a written report.")
set(CPACK_PACKAGE_INSTALL_DIRECTORY arborex)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Arborex maintainers <maintainers@arborex.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The menu entry and the ".arx" type take effect through the desktop's own triggers
# (shared-mime-info, desktop-file-utils), and reports and graphs open through xdg-open; Access
# databases are read through GDAL's ODBC driver, which needs mdbtools' driver at run time. The
# program runs without any of them.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info, desktop-file-utils, xdg-utils, odbc-mdbtools")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libreoffice-writer | abiword")
include(CPack)

# Everything an installation is made of, without the tests and the benchmarks, so that a
# package (configured with CMAKE_SKIP_INSTALL_ALL_DEPENDENCY) does not wait for them.
function(arborex_collect_installables folder)
  if(folder MATCHES "^${CMAKE_SOURCE_DIR}/(tests|bench)(/|$)")
    return()
  endif()
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    get_target_property(excluded ${target} EXCLUDE_FROM_ALL)
    if(NOT type STREQUAL "INTERFACE_LIBRARY" AND NOT excluded)
      set_property(GLOBAL APPEND PROPERTY ARBOREX_INSTALLABLES ${target})
    endif()
  endforeach()
  get_property(subfolders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder ${subfolders})
    arborex_collect_installables(${subfolder})
  endforeach()
endfunction()
arborex_collect_installables(${CMAKE_SOURCE_DIR})
get_property(installables GLOBAL PROPERTY ARBOREX_INSTALLABLES)
add_custom_target(arborex_installables)
add_dependencies(arborex_installables ${installables})
