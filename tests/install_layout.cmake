# Installs the build tree into a scratch prefix, checks that the desktop integration lands where
# the desktop looks for it, then moves the installation elsewhere and runs the installed programs
# there on the installed sample: each must find its data from its own folder, wherever that is.
# Run with -DBUILD_DIR=... -DPREFIX=...
set(MOVED ${PREFIX}-moved)
set(WORK ${PREFIX}-work)
file(REMOVE_RECURSE ${PREFIX} ${MOVED} ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
                RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${result}")
endif()
foreach(file bin/arborex bin/arborex-batch bin/arborex-chart share/applications/arborex.desktop
             share/mime/packages/arborex.xml share/icons/hicolor/scalable/apps/arborex.svg
             share/arborex/SPECIEST.DAT share/arborex/DEFAULT.DEF share/arborex/MESSAGES.DAT
             share/arborex/VDYP/vdypbat share/arborex/VDYP/vdyp.hlp share/arborex/VDYP/ALTWBS.DAT
             share/arborex/TIPSY/btipsy share/arborex/TIPSY/TIPSY32.hlp
             share/arborex/TIPSY/arborex2.btp share/arborex/sample/sample.arx
             share/arborex/sample/sample.rtf)
  if(NOT EXISTS ${PREFIX}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
file(GLOB leftovers ${PREFIX}/share/arborex/sample/*.bak)
if(leftovers)
  message(FATAL_ERROR "a new user would be given ${leftovers}")
endif()
file(READ ${PREFIX}/share/applications/arborex.desktop entry)
if(NOT entry MATCHES "MimeType=application/x-arborex-project;")
  message(FATAL_ERROR "the desktop entry does not name the project type")
endif()
# The desktop's own check of the entry, where desktop-file-utils is installed.
find_program(DESKTOP_FILE_VALIDATE desktop-file-validate)
if(DESKTOP_FILE_VALIDATE)
  execute_process(COMMAND ${DESKTOP_FILE_VALIDATE} ${PREFIX}/share/applications/arborex.desktop
                  RESULT_VARIABLE result OUTPUT_VARIABLE complaints ERROR_VARIABLE complaints)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "the desktop entry is refused:\n${complaints}")
  endif()
endif()
file(READ ${PREFIX}/share/mime/packages/arborex.xml mime)
if(NOT mime MATCHES "type=\"application/x-arborex-project\"" OR NOT mime MATCHES "\\*\\.arx")
  message(FATAL_ERROR "the MIME type does not claim *.arx")
endif()

# Moved whole, the installation must still work: nothing may point back at the build or at the
# prefix it was installed to.
file(RENAME ${PREFIX} ${MOVED})
file(MAKE_DIRECTORY ${WORK})
set(sample ${MOVED}/share/arborex/sample/sample.arx)
file(COPY ${sample} DESTINATION ${WORK})

# Runs an installed program in the scratch folder, which holds no data, and fails on a non-zero
# exit; its standard output is left in `output`.
function(run_installed)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${ARGN}
                  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE result OUTPUT_VARIABLE out
                  ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN} failed (${result}):\n${out}${errors}")
  endif()
  set(output "${out}" PARENT_SCOPE)
endfunction()
set(batch ${MOVED}/bin/arborex-batch)

# The installed sample carries its last calculation.
run_installed(${batch} info ${sample})
if(NOT output MATCHES "CutCount: +[1-9]")
  message(FATAL_ERROR "the installed sample has no saved calculation:\n${output}")
endif()

# The installed stand-ins remake the sample's curves as they were made.
run_installed(${batch} ages sample.arx)
set(ages_before "${output}")
run_installed(${batch} yields sample.arx --all --save remade.arx)
if(NOT output MATCHES "Wrote remade.arx")
  message(FATAL_ERROR "the yield run wrote nothing:\n${output}")
endif()
run_installed(${batch} ages remade.arx)
string(REPLACE "remade.arx" "sample.arx" ages_after "${output}")
if(NOT ages_after STREQUAL ages_before)
  message(FATAL_ERROR "the installed stand-ins give other harvest ages:\n${output}")
endif()
run_installed(${batch} calc remade.arx --search)
if(NOT output MATCHES "found by the search")
  message(FATAL_ERROR "the rate search on the remade curves failed:\n${output}")
endif()

# The report, and a graph drawn by the installed graphing program.
run_installed(${batch} report sample.arx report.txt)
run_installed(${batch} graph sample.arx time-volume tvgraph.txt)
run_installed(${MOVED}/bin/arborex-chart tvgraph.txt --png tvgraph.png)
foreach(file report.txt tvgraph.png)
  if(NOT EXISTS ${WORK}/${file})
    message(FATAL_ERROR "not written by the installed programs: ${file}")
  endif()
endforeach()

# A new user's first start of the moved installation.
set(first_start ${BUILD_DIR}/tests/first_start_test)
if(NOT EXISTS ${first_start})
  message(FATAL_ERROR "build first_start_test to check the first start of the installation")
endif()
run_installed(${CMAKE_COMMAND} -E env ARBOREX_PROGRAM_FOLDER=${MOVED}/bin ${first_start})

file(REMOVE_RECURSE ${MOVED} ${WORK})
