# Runs `arborex-batch info SAMPLE --json` and checks what a script consuming it relies on.
# Arguments: -DBATCH=<program> -DSAMPLE=<project>.
execute_process(COMMAND "${BATCH}" info "${SAMPLE}" --json
                RESULT_VARIABLE exit_code OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT exit_code EQUAL 0)
  message(FATAL_ERROR "exit code ${exit_code}: ${errors}")
endif()
if(NOT errors STREQUAL "")
  message(FATAL_ERROR "unexpected notes: ${errors}")
endif()
if(NOT output MATCHES "\"polygons\": 15,")
  message(FATAL_ERROR "no \"polygons\": 15 in:\n${output}")
endif()
# string(JSON) fails on text that is not JSON.
string(JSON polygons GET "${output}" polygons)
string(JSON listed LENGTH "${output}" polygonList)
string(JSON licence GET "${output}" header Licence)
string(JSON version GET "${output}" header FileVersion)
if(NOT polygons EQUAL 15 OR NOT listed EQUAL 15 OR NOT licence STREQUAL "A12345"
   OR NOT version EQUAL 3226)
  message(FATAL_ERROR "unexpected content: ${polygons} ${listed} ${licence} ${version}")
endif()
