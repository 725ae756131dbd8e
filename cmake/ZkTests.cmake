# How tests are compiled and run.

include_guard(GLOBAL)
include(CheckLinkerFlag)

# Compiling a test takes longer than running it: it is not optimised, and has line numbers for debuggers and no more. Those of
# the geometry units go through thousands of polygons, and are optimised a little where there are no sanitizers.
add_library(zk_test_options INTERFACE)
add_library(zk_geometry_test_options INTERFACE)
add_library(zk_test_sanitizers INTERFACE)
target_link_libraries(zk_test_options INTERFACE zk_options zk_test_sanitizers)
target_link_libraries(zk_geometry_test_options INTERFACE zk_options)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(zk_test_options INTERFACE -O0 -g1)
  target_compile_options(zk_geometry_test_options INTERFACE $<IF:$<CONFIG:Debug>,-O0,-O1> -g1)
  if(ZKOGL_SANITIZE)
    # To look at each pointer before it is used takes a third of a test's compilation. What the library does with pointers is
    # looked at in its units; a test that goes wrong by itself crashes, or AddressSanitizer tells. The options are a library's
    # own, as they must come after those of zk_options, which turn these checks on.
    target_compile_options(zk_test_sanitizers INTERFACE -fno-sanitize=alignment,null,object-size,vptr)
  endif()
endif()

# Each unit has a test program of its own, and all of them the same libraries below: linking takes its time, and gold two thirds
# of it. Clang's sanitizers export names that gold complains about; LLVM's own linker does not.
set(linker gold)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  set(linker lld)
endif()
check_linker_flag(CXX -fuse-ld=${linker} ZKOGL_HAS_LINKER)
if(ZKOGL_HAS_LINKER)
  target_link_options(zk_test_options INTERFACE -fuse-ld=${linker})
  target_link_options(zk_geometry_test_options INTERFACE -fuse-ld=${linker})
endif()

if(NOT ZKOGL_GEOMETRY_ONLY)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
  # Qt tells each test its folders, which no test asks for. Without them all have the same definitions, which shared
  # precompiled headers need.
  set_property(TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
endif()
# For targets that know the test runner and Qt's.
if(ZKOGL_PRECOMPILE_HEADERS AND TARGET GTest::gtest AND NOT ZKOGL_GEOMETRY_ONLY)
  file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/headers/test.cpp CONTENT "")
  add_library(zk_test_headers OBJECT ${PROJECT_BINARY_DIR}/headers/test.cpp)
  target_link_libraries(zk_test_headers PRIVATE GTest::gtest Qt6::Test Qt6::Widgets zk_test_options)
  target_precompile_headers(zk_test_headers PRIVATE
    <gtest/gtest.h>
    <algorithm> <array> <cmath> <functional> <limits> <map> <memory> <optional> <random> <string> <vector>
    <QApplication> <QImage> <QMouseEvent> <QPainter> <QPointer> <QTest> <QWidget>)
endif()

# Tests look at the screen: each has a virtual one of its own where there is xvfb-run, and runs beside others. Elsewhere they
# share the user's, one after the other.
find_program(ZKOGL_XVFB_RUN xvfb-run)

# zk_add_test(<name> SOURCES <file>... [DEPENDS <unit or library>...] [QT] [MOC] [ENVIRONMENT <NAME=value>...] [COST <cost>])
#   One executable of the test runner. QT: it uses Qt; MOC: it has classes that moc must read, which takes its time. It leaves
#   its counts as XML in the build folder's test-results, where `dev` adds them up. What has a cost begins before the others,
#   the dearest first.
function(zk_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "QT;MOC" "COST" "SOURCES;DEPENDS;ENVIRONMENT")
  add_executable(${name} ${test_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  if(test_QT)
    target_link_libraries(${name} PRIVATE ${test_DEPENDS} Qt6::Test zk_test_options)
    set_target_properties(${name} PROPERTIES AUTOMOC ${test_MOC})
    zk_reuse_headers(zk_test_headers ${name})
    zk_compile_together(${name})
  else()
    target_link_libraries(${name} PRIVATE ${test_DEPENDS} zk_geometry_test_options)
  endif()
  zk_run_test(${name} TARGET ${name} ENVIRONMENT ${test_ENVIRONMENT})
  if(test_COST)
    set_tests_properties(${name} PROPERTIES COST ${test_COST})
  endif()
endfunction()

# zk_run_test(<name> TARGET <test executable> [FILTER <gtest filter>] [ENVIRONMENT <NAME=value>...])
#   Runs an executable of zk_add_test once more, under another environment.
function(zk_run_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "" "TARGET;FILTER" "ENVIRONMENT")
  set(arguments "--gtest_output=xml:${PROJECT_BINARY_DIR}/test-results/${name}.xml")
  if(test_FILTER)
    list(APPEND arguments "--gtest_filter=${test_FILTER}")
  endif()
  if("QT_QPA_PLATFORM=xcb" IN_LIST test_ENVIRONMENT)
    zk_add_display_test(${name} COMMAND $<TARGET_FILE:${test_TARGET}> ${arguments})
  else()
    add_test(NAME ${name} COMMAND ${test_TARGET} ${arguments})
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT 1200 ENVIRONMENT "${test_ENVIRONMENT}")
endfunction()

# zk_add_display_test(<name> COMMAND <program> <argument>...): a test that looks at the screen. It still wants
# QT_QPA_PLATFORM=xcb in its environment.
function(zk_add_display_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "" "" "COMMAND")
  if(ZKOGL_XVFB_RUN)
    add_test(NAME ${name} COMMAND ${ZKOGL_XVFB_RUN} -a -s "-screen 0 1280x1024x24" ${test_COMMAND})
  else()
    add_test(NAME ${name} COMMAND ${test_COMMAND})
    set_tests_properties(${name} PROPERTIES RESOURCE_LOCK display)
  endif()
endfunction()
