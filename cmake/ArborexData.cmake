# Stages the reference files of data/, its subfolders included (data/TIPSY/, data/VDYP/), and the
# sample projects (as share/arborex/sample/, which a new user gets a copy of) beside the built
# programs, and installs them the same way.
file(GLOB_RECURSE ARBOREX_DATA_FILES CONFIGURE_DEPENDS LIST_DIRECTORIES false
     RELATIVE ${CMAKE_SOURCE_DIR}/data ${CMAKE_SOURCE_DIR}/data/*)
file(GLOB ARBOREX_SAMPLE_FILES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/samples/*.arx)

set(staged)
foreach(name ${ARBOREX_DATA_FILES})
  set(source ${CMAKE_SOURCE_DIR}/data/${name})
  get_filename_component(folder ${name} DIRECTORY)
  list(APPEND staged ${ARBOREX_SHARE_DIR}/${name})
  add_custom_command(OUTPUT ${ARBOREX_SHARE_DIR}/${name}
                     COMMAND ${CMAKE_COMMAND} -E make_directory ${ARBOREX_SHARE_DIR}/${folder}
                     COMMAND ${CMAKE_COMMAND} -E copy_if_different ${source} ${ARBOREX_SHARE_DIR}/${name}
                     DEPENDS ${source} VERBATIM)
  install(FILES ${source} DESTINATION share/arborex/${folder})
endforeach()
foreach(source ${ARBOREX_SAMPLE_FILES})
  get_filename_component(name ${source} NAME)
  list(APPEND staged ${ARBOREX_SHARE_DIR}/sample/${name})
  add_custom_command(OUTPUT ${ARBOREX_SHARE_DIR}/sample/${name}
                     COMMAND ${CMAKE_COMMAND} -E copy_if_different ${source}
                             ${ARBOREX_SHARE_DIR}/sample/${name}
                     DEPENDS ${source} VERBATIM)
endforeach()
add_custom_target(arborex_data ALL DEPENDS ${staged})

install(FILES ${ARBOREX_SAMPLE_FILES} DESTINATION share/arborex/sample)

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
