# Adds a polygon to a copy of the sample with `arborex-batch polygon COPY add NAME --json`, then
# lists the copy: the new polygon is the sixteenth, its curves not yet calculated, and the former
# file is kept as .bak. Arguments: -DBATCH=<program> -DSAMPLE=<project> -DWORK=<scratch folder>.
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(COPY_FILE "${SAMPLE}" "${WORK}/sample.arx")
execute_process(COMMAND "${BATCH}" polygon "${WORK}/sample.arx" add "Extra 1" --json
                RESULT_VARIABLE exit_code OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT exit_code EQUAL 0)
  message(FATAL_ERROR "add: exit code ${exit_code}: ${errors}\n${output}")
endif()
string(JSON index GET "${output}" changed 0 index)
string(JSON name GET "${output}" changed 0 NAME)
if(NOT index EQUAL 15 OR NOT name STREQUAL "Extra 1" OR NOT EXISTS "${WORK}/sample.bak")
  message(FATAL_ERROR "unexpected add: ${output}")
endif()
execute_process(COMMAND "${BATCH}" polygon "${WORK}/sample.arx" list --json
                RESULT_VARIABLE exit_code OUTPUT_VARIABLE output ERROR_VARIABLE errors)
string(JSON polygons GET "${output}" polygons)
string(JSON state GET "${output}" polygonList 15 YIELDSTATE 0)
if(NOT exit_code EQUAL 0 OR NOT polygons EQUAL 16 OR NOT state EQUAL 0)
  message(FATAL_ERROR "unexpected list (exit code ${exit_code}): ${errors}\n${output}")
endif()
