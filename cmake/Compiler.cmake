# Warnings are errors everywhere; sanitizers and a faster linker where asked for or present.
add_library(tessary_options INTERFACE)
target_compile_options(tessary_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
target_compile_definitions(tessary_options INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_CAST_TO_ASCII
                                                     QT_NO_KEYWORDS)
if(TESSARY_SANITIZE)
  target_compile_options(tessary_options INTERFACE -fsanitize=${TESSARY_SANITIZE}
                                                   -fno-omit-frame-pointer)
  target_link_options(tessary_options INTERFACE -fsanitize=${TESSARY_SANITIZE})
endif()
if(TESSARY_SANITIZE STREQUAL "thread")
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With the sanitizer's calls in between, GCC takes moved variants for uninitialized.
    target_compile_options(tessary_options INTERFACE -Wno-maybe-uninitialized)
  endif()
  add_library(qt_synchronisation STATIC ${CMAKE_SOURCE_DIR}/cmake/QtSynchronisation.cpp)
  target_compile_options(qt_synchronisation PRIVATE -fsanitize=thread)
  target_link_libraries(qt_synchronisation PRIVATE Qt6::Core ${CMAKE_DL_LIBS})
  target_link_libraries(tessary_options INTERFACE qt_synchronisation)
endif()
if(TESSARY_FUZZ)
  target_compile_options(tessary_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

find_program(TESSARY_LLD ld.lld)
if(TESSARY_LLD)
  target_link_options(tessary_options INTERFACE -fuse-ld=lld)
endif()
find_program(TESSARY_CCACHE ccache)
if(TESSARY_CCACHE)
  # Without these the cache takes no file that is compiled with precompiled headers.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${TESSARY_CCACHE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tessary_options INTERFACE -fpch-preprocess)
  endif()
endif()
