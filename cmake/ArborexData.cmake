# Stages the reference files of data/, its subfolders included (data/TIPSY/, data/VDYP/), the
# help files of the growth-model stand-ins (packaging/share/, laid out the same way) and the
# sample projects (as share/arborex/sample/, which a new user gets a copy of) beside the built
# programs, and installs them the same way.
file(GLOB_RECURSE ARBOREX_DATA_FILES CONFIGURE_DEPENDS LIST_DIRECTORIES false
     RELATIVE ${CMAKE_SOURCE_DIR}/data ${CMAKE_SOURCE_DIR}/data/*)
file(GLOB_RECURSE ARBOREX_HELP_FILES CONFIGURE_DEPENDS LIST_DIRECTORIES false
     RELATIVE ${CMAKE_SOURCE_DIR}/packaging/share ${CMAKE_SOURCE_DIR}/packaging/share/*)
file(GLOB ARBOREX_SAMPLE_FILES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/samples/*.arx)

set(staged)
set(ARBOREX_SHARE_SOURCES)
foreach(name ${ARBOREX_DATA_FILES})
  list(APPEND ARBOREX_SHARE_SOURCES ${CMAKE_SOURCE_DIR}/data/${name})
endforeach()
foreach(name ${ARBOREX_HELP_FILES})
  list(APPEND ARBOREX_SHARE_SOURCES ${CMAKE_SOURCE_DIR}/packaging/share/${name})
endforeach()
foreach(source ${ARBOREX_SHARE_SOURCES})
  string(REGEX REPLACE "^${CMAKE_SOURCE_DIR}/(data|packaging/share)/" "" name ${source})
  get_filename_component(folder ${name} DIRECTORY)
  list(APPEND staged ${ARBOREX_SHARE_DIR}/${name})
  add_custom_command(OUTPUT ${ARBOREX_SHARE_DIR}/${name}
                     COMMAND ${CMAKE_COMMAND} -E make_directory ${ARBOREX_SHARE_DIR}/${folder}
                     COMMAND ${CMAKE_COMMAND} -E copy_if_different ${source} ${ARBOREX_SHARE_DIR}/${name}
                     DEPENDS ${source} VERBATIM)
  install(FILES ${source} DESTINATION share/arborex/${folder})
endforeach()
add_custom_target(arborex_data ALL DEPENDS ${staged})

# A new user's copy of the sample opens with its last calculation and its report ready: the
# installed sample is the bundled one after a rate search, saved by the batch program over the
# staged data, with the written report beside it.
set(calculated)
foreach(source ${ARBOREX_SAMPLE_FILES})
  get_filename_component(stem ${source} NAME_WE)
  set(project ${ARBOREX_SHARE_DIR}/sample/${stem}.arx)
  set(report ${ARBOREX_SHARE_DIR}/sample/${stem}.rtf)
  list(APPEND calculated ${project} ${report})
  add_custom_command(OUTPUT ${project} ${report}
                     COMMAND ${CMAKE_COMMAND} -DBATCH=$<TARGET_FILE:arborex-batch>
                             -DSOURCE=${source} -DPROJECT=${project} -DREPORT=${report}
                             -P ${CMAKE_SOURCE_DIR}/cmake/CalculateSample.cmake
                     DEPENDS ${source} arborex-batch ${CMAKE_SOURCE_DIR}/cmake/CalculateSample.cmake
                     VERBATIM)
endforeach()
add_custom_target(arborex_sample ALL DEPENDS ${calculated})
install(FILES ${calculated} DESTINATION share/arborex/sample)

# A program that reads the reference data: built into build/bin, installed into bin.
function(arborex_program target)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${ARBOREX_BIN_DIR})
  add_dependencies(${target} arborex_data)
  install(TARGETS ${target} RUNTIME DESTINATION bin)
endfunction()

# A stand-in for an outside growth model: built into share/arborex/FOLDER of the build tree and
# installed into share/arborex/FOLDER, where the settings' default program paths point, beside
# the model's own files; it finds the species tables one folder up.
function(arborex_standin_program target folder)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${ARBOREX_SHARE_DIR}/${folder})
  add_dependencies(${target} arborex_data)
  install(TARGETS ${target} RUNTIME DESTINATION share/arborex/${folder})
endfunction()
