# One room = one folder = one namespace = one static library, dorvo_ROOM.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(DORVO_BENCH "build the benchmarks" OFF)
option(DORVO_FUZZ "build the fuzz targets (clang)" OFF)
option(DORVO_PREVIEW "build the preview windows (Qt 6, CUPS) where their libraries are" ON)
set(DORVO_SANITIZE "" CACHE STRING "sanitizers for every target, as -fsanitize takes them")

find_package(PkgConfig REQUIRED)
find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(dorvo_flags INTERFACE)
target_include_directories(dorvo_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(dorvo_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                               $<$<CXX_COMPILER_ID:GNU>:-Werror>)
if(DORVO_SANITIZE)
  # The checks that sanitizers put into the standard library's templates make g++ see uninitialized values there.
  target_compile_options(dorvo_flags INTERFACE -fsanitize=${DORVO_SANITIZE} -fno-omit-frame-pointer
                                               -fno-sanitize-recover=all
                                               $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(dorvo_flags INTERFACE -fsanitize=${DORVO_SANITIZE})
endif()

# dorvo_room(NAME SOURCE...): the library of a room. Without sources it only carries what it links to.
function(dorvo_room name)
  if(ARGN)
    add_library(dorvo_${name} STATIC ${ARGN})
    target_link_libraries(dorvo_${name} PUBLIC dorvo_flags)
  else()
    add_library(dorvo_${name} INTERFACE)
    target_link_libraries(dorvo_${name} INTERFACE dorvo_flags)
  endif()
endfunction()

# dorvo_package(NAME PKGCONFIG-MODULE...): an imported target NAME for a library of the distribution. Its headers
# count as the system's, so that our warnings do not apply to them.
function(dorvo_package name)
  if(NOT TARGET PkgConfig::${name})
    pkg_check_modules(${name} REQUIRED IMPORTED_TARGET GLOBAL ${ARGN})
  endif()
endfunction()

# dorvo_test(NAME SOURCE... [LINK library...]): one GoogleTest program, one CTest test.
function(dorvo_test name)
  cmake_parse_arguments(T "" "" "LINK" ${ARGN})
  find_package(GTest REQUIRED)
  add_executable(test_${name} ${T_UNPARSED_ARGUMENTS})
  target_link_libraries(test_${name} PRIVATE dorvo_flags ${T_LINK} GTest::gtest GTest::gtest_main)
  target_compile_definitions(test_${name} PRIVATE DORVO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  add_test(NAME ${name} COMMAND test_${name})
endfunction()
