# Runs the README's main job, `arborex-batch calc SAMPLE`, and checks that the saved calculation
# of the sample gives a searched rate and a ten-year table. Arguments: -DBATCH, -DSAMPLE.
execute_process(COMMAND "${BATCH}" calc "${SAMPLE}"
                RESULT_VARIABLE exit_code OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT exit_code EQUAL 0)
  message(FATAL_ERROR "exit code ${exit_code}: ${errors}\n${output}")
endif()
if(NOT output MATCHES "Harvest rate: +[0-9,]+ m.+/yr \\(found by the search in [0-9]+ trials\\)")
  message(FATAL_ERROR "no searched rate in:\n${output}")
endif()
string(REGEX MATCHALL "\n[0-9][0-9][0-9][0-9]-[0-9][0-9][0-9][0-9] " decades "${output}")
list(LENGTH decades count)
if(NOT count EQUAL 25)
  message(FATAL_ERROR "${count} ten-year rows instead of 25 in:\n${output}")
endif()
