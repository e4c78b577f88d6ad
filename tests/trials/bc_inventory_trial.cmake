# Imports the British Columbia inventory's layers table into a new project through the database
# route, with the mapping the README shows, and checks what came in and what was refused.
# Arguments: -DBATCH=<program> -DSAMPLE_DIR=<bc-vri-sample folder> -DWORK=<scratch folder>
#            -DGDAL=<whether the build reads tables through GDAL>.
set(layers "${SAMPLE_DIR}/vri_layers.csv")
if(NOT EXISTS "${layers}")
  message("SKIPPED: no ${layers}")
  return()
endif()
if(NOT GDAL)
  message("SKIPPED: built without GDAL, which reads the table")
  return()
endif()
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
set(mapping --map MAP_ID=MAPSHEET --map POLYGON_NUMBER=POLYGON
            --map ESTIMATED_SITE_INDEX=VSITEINDEX --map EST_AGE_SPP1=AGE
            --map EST_HEIGHT_SPP1=VHEIGHTTOTAL)

# Imports the layers into a new project `name` with the extra arguments, and checks the
# counters: added, duplicates skipped (blank, no-name and updated are all 0: every layer has
# its map sheet and polygon number, and the project starts empty).
function(import_layers name added skipped)
  set(project "${WORK}/${name}.arx")
  execute_process(COMMAND "${BATCH}" import "${project}" "${layers}" ${mapping} ${ARGN} --json
                  RESULT_VARIABLE exit_code OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT exit_code EQUAL 0)
    message(FATAL_ERROR "${name}: exit code ${exit_code}: ${errors}")
  endif()
  set(expected_ImpAdded ${added})
  set(expected_ImpSkipped ${skipped})
  foreach(counter ImpAdded ImpUpdated ImpSkipped ImpBlank ImpNoName)
    if(NOT DEFINED expected_${counter})
      set(expected_${counter} 0)
    endif()
    string(JSON value GET "${output}" counts ${counter})
    if(NOT value EQUAL expected_${counter})
      message(FATAL_ERROR "${name}: ${counter} is ${value}, not ${expected_${counter}}:\n${output}")
    endif()
  endforeach()
  # Long inventory species codes (PLI, SX, FDI, ACT) find their entries by alias: no value is
  # refused.
  string(JSON route GET "${output}" route)
  string(JSON refused LENGTH "${output}" messages)
  if(NOT route STREQUAL "database" OR NOT refused EQUAL 0)
    message(FATAL_ERROR "${name}: route ${route}, ${refused} kinds of refused values:\n${output}")
  endif()
  # The project reads back with every polygon.
  execute_process(COMMAND "${BATCH}" info "${project}" --json --quiet
                  RESULT_VARIABLE exit_code OUTPUT_VARIABLE info ERROR_VARIABLE errors)
  string(JSON listed LENGTH "${info}" polygonList)
  if(NOT exit_code EQUAL 0 OR NOT listed EQUAL added)
    message(FATAL_ERROR "${name}: info exit code ${exit_code}, ${listed} polygons: ${errors}")
  endif()
endfunction()

# The 1,077 primary layers make 1,069 polygons: a NAME holds 12 characters, so "93G072 " and
# the first five digits of the eight-digit polygon number, and 8 pairs of polygons share one.
import_layers(bc_primary 1069 8 --where VDYP7_LAYER_CD=P)
# All 1,333 layers: the secondary and dead layers of a polygon are duplicates of its name too.
import_layers(bc_all_layers 1069 264)
