# The bundled sample is what tools/make_sample writes today, its curves from the yield run over
# the stand-ins in SHARE: a change to the project writer, to the sample's recipe or to what the
# stand-ins answer must come with the sample written anew.
# Arguments: -DMAKE_SAMPLE -DOUT -DDATA -DSHARE -DEXPECTED.
execute_process(COMMAND ${MAKE_SAMPLE} ${OUT} ${DATA} ${SHARE} RESULT_VARIABLE result
                OUTPUT_QUIET ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "make_sample failed: ${result}\n${errors}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUT} ${EXPECTED} RESULT_VARIABLE differs)
file(REMOVE ${OUT})
if(NOT differs EQUAL 0)
  message(FATAL_ERROR "samples/sample.arx is not what make_sample writes: run "
                      "make_sample samples/sample.arx data")
endif()
