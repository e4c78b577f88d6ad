# The desktop workflow as a batch script: a new project from the inventory, W2's site index
# raised, yields from the stand-ins, a rate search over all four ownerships saved with the project, the delimited report
# of the found rate and the written report. With -DDESKTOP it then checks that the desktop route
# (desktop_workflow_test) showed the same summary, found the same rate and wrote the same reports,
# byte for byte.
# Arguments: -DBATCH (arborex-batch), -DINVENTORY, -DPROJECT (started afresh), -DWORK (the
# reports, emptied first), optional -DDESKTOP.
# "Now" is ARBOREX_TODAY of the environment, as for the desktop route.
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
get_filename_component(folder "${PROJECT}" DIRECTORY)
get_filename_component(stem "${PROJECT}" NAME_WE)
file(REMOVE "${PROJECT}" "${folder}/${stem}.bak")
set(project "${PROJECT}")

function(batch)
  execute_process(COMMAND "${BATCH}" ${ARGN} --quiet WORKING_DIRECTORY "${WORK}"
                  RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "arborex-batch ${ARGN}: exit code ${code}\n${err}\n${out}")
  endif()
  set(batch_output "${out}" PARENT_SCOPE)
endfunction()

batch(import "${project}" "${INVENTORY}")
batch(polygon "${project}" set W2 VSITEINDEX=21.5)
batch(yields "${project}")
# The summary screen's rows, a blank between cells (the batch aligns them, the desktop route
# leaves them a tab apart), the caption row left out.
function(cells_of text out)
  string(REGEX REPLACE "[ \t]+" " " text "${text}")
  string(REGEX REPLACE " *\n *" "\n" text "${text}")
  set(${out} "${text}" PARENT_SCOPE)
endfunction()
batch(summary "${project}")
string(FIND "${batch_output}" "\n" caption_end)
math(EXPR caption_end "${caption_end} + 1")
string(SUBSTRING "${batch_output}" ${caption_end} -1 rows)
cells_of("${rows}" summary)
batch(calc "${project}" --search --owners all --save "${project}")
# The rate as both routes show it: whole cubic metres a year.
if(NOT batch_output MATCHES "Harvest rate: +([0-9,]+) m")
  message(FATAL_ERROR "no rate in:\n${batch_output}")
endif()
string(REPLACE "," "" rate "${CMAKE_MATCH_1}")
file(WRITE "${WORK}/rate.txt" "${rate}\n")
batch(schedule "${project}" "${WORK}/schedule.txt")
batch(report "${project}" "${WORK}/report.rtf")
message(STATUS "batch route: harvest rate ${rate} m3/yr")
# "Now" is the fixed day: the report's date, and the plan starts in its year.
file(READ "${WORK}/report.rtf" report)
file(STRINGS "${WORK}/schedule.txt" first_years REGEX "^2026\t" LIMIT_COUNT 1)
if(NOT report MATCHES "15 June, 2026" OR NOT first_years)
  message(FATAL_ERROR "the reports do not follow ARBOREX_TODAY=2026-06-15")
endif()

if(NOT DESKTOP)
  return()
endif()
file(STRINGS "${DESKTOP}/rate.txt" desktop_rate LIMIT_COUNT 1)
if(NOT desktop_rate EQUAL rate)
  message(FATAL_ERROR "the desktop found ${desktop_rate} m3/yr, the batch ${rate} m3/yr")
endif()
file(READ "${DESKTOP}/summary.txt" desktop_rows)
cells_of("${desktop_rows}" desktop_summary)
if(NOT desktop_summary STREQUAL summary)
  message(FATAL_ERROR "the summaries differ:\n${desktop_summary}\n${summary}")
endif()
foreach(name schedule.txt report.rtf)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${DESKTOP}/${name}" "${WORK}/${name}"
                  RESULT_VARIABLE differ)
  if(differ)
    message(FATAL_ERROR "${name} differs: ${DESKTOP}/${name} and ${WORK}/${name}")
  endif()
endforeach()
