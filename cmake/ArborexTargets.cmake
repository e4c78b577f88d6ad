# Common compile settings for every Arborex target.
#
# Floating point follows the stored-float rules of the domain: every step is rounded to its
# declared width, so contraction into fused multiply-adds and fast-math are off everywhere.
function(arborex_target_defaults target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_compile_options(${target} PRIVATE -Wall -Wextra -ffp-contract=off -fno-fast-math)
  # GCC 12 at -O3 warns of overlapping copies inside std::string's own joins (a known false
  # positive of its library headers); the warning says nothing about this code.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(ARBOREX_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer
                                             -fno-sanitize-recover=undefined)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
  # A fuzzer steers by the edges it reaches, so the readers it drives need the instrumentation,
  # not only the fuzzer's own file.
  if(ARBOREX_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# One CTest entry per test file. GUI tests run on the offscreen platform.
function(arborex_add_test source)
  cmake_parse_arguments(ARG "GUI" "" "LIBS" ${ARGN})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  arborex_target_defaults(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS})
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  # A test that hangs (a box nobody answers) fails after five minutes instead of holding the run.
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
  if(ARG_GUI)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" LABELS gui)
  else()
    set_tests_properties(${name} PROPERTIES LABELS core)
  endif()
endfunction()
