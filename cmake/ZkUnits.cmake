# One unit = one folder = one target. A unit names the units below it, and CMake then lets it include those only.

include_guard(GLOBAL)

add_library(zk_options INTERFACE)
target_compile_features(zk_options INTERFACE cxx_std_20)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  # Results of the geometry layer are exact to the bit on every machine: no contraction into fused operations, and
  # never -ffast-math.
  target_compile_options(zk_options INTERFACE -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
  if(ZKOGL_SANITIZE)
    target_compile_options(zk_options INTERFACE -fsanitize=${ZKOGL_SANITIZE} -fno-omit-frame-pointer
                                                -fno-sanitize-recover=undefined)
    target_link_options(zk_options INTERFACE -fsanitize=${ZKOGL_SANITIZE})
    target_sources(zk_options INTERFACE
      $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_CURRENT_LIST_DIR}/keeplibraries.cpp>)
  endif()
endif()

# zk_add_unit(<name> SOURCES <file>... [DEPENDS <unit or library>...] [QT])
#   QT: the unit has classes that moc must read.
function(zk_add_unit name)
  cmake_parse_arguments(PARSE_ARGV 1 unit "QT" "" "SOURCES;DEPENDS")
  add_library(${name} ${unit_SOURCES})
  add_library(ZKOgl::${name} ALIAS ${name})
  target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>")
  target_link_libraries(${name} PUBLIC ${unit_DEPENDS} PRIVATE $<BUILD_INTERFACE:zk_options>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  if(unit_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# zk_add_test(<name> SOURCES <file>... [DEPENDS <unit or library>...] [QT] [ENVIRONMENT <NAME=value>...])
#   One executable of the test runner. It leaves its counts as XML in the build folder's test-results, where `dev` adds
#   them up.
function(zk_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "QT" "" "SOURCES;DEPENDS;ENVIRONMENT")
  add_executable(${name} ${test_SOURCES})
  target_link_libraries(${name} PRIVATE ${test_DEPENDS} zk_options)
  if(test_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
  zk_run_test(${name} TARGET ${name} ENVIRONMENT ${test_ENVIRONMENT})
endfunction()

# zk_run_test(<name> TARGET <test executable> [FILTER <gtest filter>] [ENVIRONMENT <NAME=value>...])
#   Runs an executable of zk_add_test once more, under another environment.
function(zk_run_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "" "TARGET;FILTER" "ENVIRONMENT")
  set(arguments "--gtest_output=xml:${PROJECT_BINARY_DIR}/test-results/${name}.xml")
  if(test_FILTER)
    list(APPEND arguments "--gtest_filter=${test_FILTER}")
  endif()
  add_test(NAME ${name} COMMAND ${test_TARGET} ${arguments})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "${test_ENVIRONMENT}")
  if("QT_QPA_PLATFORM=xcb" IN_LIST test_ENVIRONMENT)
    # Tests look at the screen, so two of them cannot have windows on it at once, however many run in parallel.
    set_tests_properties(${name} PROPERTIES RESOURCE_LOCK display)
  endif()
endfunction()
