# How every target of this project is built, in one place.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# -O3 costs build time and false warnings from GCC 12's string code, and no benchmark wants it.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(zentrel_flags INTERFACE)
target_include_directories(zentrel_flags INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_options(zentrel_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
# GCC 12 sees an overlap in "text" + std::string at -O3 where there is none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(zentrel_flags INTERFACE -Wno-restrict)
endif()
if(ZENTREL_WERROR)
  target_compile_options(zentrel_flags INTERFACE -Werror)
endif()
if(ZENTREL_SANITIZE)
  target_compile_options(zentrel_flags INTERFACE -fsanitize=address,undefined
                                                 -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # What the sanitizers put between the lines makes GCC see uninitialised values where none are.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(zentrel_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
  target_link_options(zentrel_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ZENTREL_FUZZ)
  target_compile_options(zentrel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# zentrel_room(name [LINKS target...]): the library zentrel_<name> from every .cpp directly in this
# folder. LINKS names the rooms below; everything else is the standard library.
function(zentrel_room name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(sources)
    add_library(zentrel_${name} STATIC ${sources})
    target_link_libraries(zentrel_${name} PUBLIC zentrel_flags ${ARG_LINKS})
  else()
    add_library(zentrel_${name} INTERFACE)
    target_link_libraries(zentrel_${name} INTERFACE zentrel_flags ${ARG_LINKS})
  endif()
endfunction()

# zentrel_tests(room LINKS target...): the executable test_<room> from every *_test.cpp in
# tests/<room>/. ./test runs every executable under <build>/tests/bin.
function(zentrel_tests room)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${room}/*.cpp")
  if(NOT sources)
    return()
  endif()
  add_executable(test_${room} ${sources})
  target_link_libraries(test_${room} PRIVATE zentrel_flags ${ARG_LINKS} GTest::gmock_main)
  target_compile_definitions(test_${room} PRIVATE ZENTREL_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  # Compiling a test costs more than running it.
  target_compile_options(test_${room} PRIVATE -O0)
  target_precompile_headers(test_${room} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  set_target_properties(test_${room} PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                                "${CMAKE_BINARY_DIR}/tests/bin")
  add_test(NAME ${room} COMMAND test_${room})
  add_dependencies(tests test_${room})
endfunction()
