# Stages the reference files of data/ and the sample projects (as share/arborex/sample/, which
# a new user gets a copy of) beside the built programs, and installs them the same way.
file(GLOB ARBOREX_DATA_FILES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/*)
file(GLOB ARBOREX_SAMPLE_FILES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/samples/*.arx)

set(staged)
foreach(source ${ARBOREX_DATA_FILES})
  get_filename_component(name ${source} NAME)
  list(APPEND staged ${ARBOREX_SHARE_DIR}/${name})
  add_custom_command(OUTPUT ${ARBOREX_SHARE_DIR}/${name}
                     COMMAND ${CMAKE_COMMAND} -E copy_if_different ${source} ${ARBOREX_SHARE_DIR}/${name}
                     DEPENDS ${source} VERBATIM)
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

install(FILES ${ARBOREX_DATA_FILES} DESTINATION share/arborex)
install(FILES ${ARBOREX_SAMPLE_FILES} DESTINATION share/arborex/sample)

# A program that reads the reference data: built into build/bin, installed into bin.
function(arborex_program target)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${ARBOREX_BIN_DIR})
  add_dependencies(${target} arborex_data)
  install(TARGETS ${target} RUNTIME DESTINATION bin)
endfunction()
