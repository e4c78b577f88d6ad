# Installs the build tree into a scratch prefix and checks that the desktop integration lands
# where the desktop looks for it. Run with -DBUILD_DIR=... -DPREFIX=...
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
                RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${result}")
endif()
foreach(file bin/arborex bin/arborex-batch bin/arborex-chart share/applications/arborex.desktop
             share/mime/packages/arborex.xml share/icons/hicolor/scalable/apps/arborex.svg
             share/arborex/SPECIEST.DAT share/arborex/DEFAULT.DEF share/arborex/VDYP/vdypbat
             share/arborex/VDYP/ALTWBS.DAT share/arborex/TIPSY/btipsy
             share/arborex/TIPSY/arborex2.btp)
  if(NOT EXISTS ${PREFIX}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
file(READ ${PREFIX}/share/applications/arborex.desktop entry)
if(NOT entry MATCHES "MimeType=application/x-arborex-project;")
  message(FATAL_ERROR "the desktop entry does not name the project type")
endif()
file(READ ${PREFIX}/share/mime/packages/arborex.xml mime)
if(NOT mime MATCHES "type=\"application/x-arborex-project\"" OR NOT mime MATCHES "\\*\\.arx")
  message(FATAL_ERROR "the MIME type does not claim *.arx")
endif()
file(REMOVE_RECURSE ${PREFIX})
