# The bundled sample is what tools/make_sample writes today: a change to the project writer or
# to the sample's recipe must come with the sample written anew.
execute_process(COMMAND ${MAKE_SAMPLE} ${OUT} ${DATA} RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "make_sample failed: ${result}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUT} ${EXPECTED} RESULT_VARIABLE differs)
file(REMOVE ${OUT})
if(NOT differs EQUAL 0)
  message(FATAL_ERROR "samples/sample.arx is not what make_sample writes: run "
                      "make_sample samples/sample.arx data")
endif()
