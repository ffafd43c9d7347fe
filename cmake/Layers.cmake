# A layer is a static library whose headers can be included only by targets that link it: each has
# an include root of its own that holds nothing but a link to its folder, so an include that the
# architecture forbids is "no such file".
function(add_layer name)
  cmake_parse_arguments(ARG "" "" "USES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp
       ${CMAKE_SOURCE_DIR}/src/${name}/*.h)
  add_library(${name} STATIC ${sources})
  set(root ${CMAKE_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${name} ${root}/${name} SYMBOLIC)
  target_include_directories(${name} PUBLIC ${root})
  target_link_libraries(${name} PUBLIC ${ARG_USES} PRIVATE tessary_options)
  target_precompile_headers(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/Precompiled.h)
endfunction()
