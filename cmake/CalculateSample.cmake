# Writes the installed copy of a sample project: SOURCE after a rate search with its saved
# settings, as PROJECT, and its written report as REPORT. Run with -DBATCH=arborex-batch
# -DSOURCE=... -DPROJECT=... -DREPORT=...
get_filename_component(folder ${PROJECT} DIRECTORY)
file(MAKE_DIRECTORY ${folder})
# Saving over an older copy would keep it as a .bak, which a new user would be given too.
file(REMOVE ${PROJECT} ${PROJECT}.bak ${REPORT})
# The search's summary and the report's notes would only fill the build's log.
execute_process(COMMAND ${BATCH} calc ${SOURCE} --search --save ${PROJECT} --quiet
                RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cannot calculate ${SOURCE} (${result}): ${errors}")
endif()
# Run in the sample's folder, so that the report names the project by its name alone rather
# than by where the build stood.
get_filename_component(project_name ${PROJECT} NAME)
get_filename_component(report_name ${REPORT} NAME)
execute_process(COMMAND ${BATCH} report ${project_name} ${report_name} --quiet
                WORKING_DIRECTORY ${folder} RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cannot write the report of ${PROJECT} (${result}): ${errors}")
endif()
