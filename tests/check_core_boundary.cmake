# Fails when any file of the core includes a Qt header.
file(GLOB_RECURSE files ${CORE_DIR}/*.hpp ${CORE_DIR}/*.cpp)
foreach(f ${files})
  file(STRINGS ${f} hits REGEX "^[ \t]*#[ \t]*include[ \t]*<Q")
  if(hits)
    message(FATAL_ERROR "Qt include in the core: ${f}: ${hits}")
  endif()
endforeach()
message(STATUS "core is free of Qt")
