find_package(GTest REQUIRED)

# One test program a layer, from tests/<name>; it may use the shared test support. WIDGETS gives it
# an application with widgets and what drives them.
function(add_layer_tests name)
  cmake_parse_arguments(ARG "WIDGETS" "" "USES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp
       ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE ${ARG_USES} test_support GTest::gmock tessary_options)
  if(ARG_WIDGETS)
    target_sources(test_${name} PRIVATE support/WidgetsTestMain.cpp)
    target_link_libraries(test_${name} PRIVATE widgets Qt6::Test)
  endif()
  target_compile_definitions(test_${name} PRIVATE TESSARY_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_precompile_headers(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/Precompiled.h
                            <gtest/gtest.h>)
  if(TESSARY_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With the sanitizers' checks in between, GCC takes moved variants for uninitialized.
    target_compile_options(test_${name} PRIVATE -Wno-maybe-uninitialized)
  endif()
  add_test(NAME ${name} COMMAND test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  if(TESSARY_SANITIZE STREQUAL "thread")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
                 "TSAN_OPTIONS=ignore_noninstrumented_modules=1")
  endif()
endfunction()
