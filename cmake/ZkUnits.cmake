# One unit = one folder = one target. A unit names the units below it, and CMake then lets it include those only.

include_guard(GLOBAL)
include(GNUInstallDirs)

set(ZKOGL_EXPORTS ${CMAKE_CURRENT_LIST_DIR}/exports.map)

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

# zk_reuse_headers(<target> <other>...): the others are compiled with the headers that the first has precompiled, where there is
# such a target. They have its compiler options and know its libraries.
function(zk_reuse_headers headers)
  if(TARGET ${headers})
    foreach(target IN LISTS ARGN)
      target_precompile_headers(${target} REUSE_FROM ${headers})
    endforeach()
  endif()
endfunction()

# Qt's headers take most of the time in which the units are compiled. That a source lacks one of them does not show then; a test
# (tests/install/includes.pl) looks for those that are missing.
if(ZKOGL_PRECOMPILE_HEADERS AND NOT ZKOGL_GEOMETRY_ONLY)
  file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/headers/unit.cpp CONTENT "")
  add_library(zk_unit_headers OBJECT ${PROJECT_BINARY_DIR}/headers/unit.cpp)
  target_link_libraries(zk_unit_headers PRIVATE Qt6::Widgets zk_options)
  set_target_properties(zk_unit_headers PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_precompile_headers(zk_unit_headers PRIVATE
    <algorithm> <array> <cmath> <cstdint> <functional> <limits> <map> <memory> <optional> <string> <vector>
    <QColor> <QImage> <QPointer> <QScopeGuard> <QVariant> <QWidget>)
endif()

# Programs and libraries that use Qt's headers and are part of no unit share those of zk_program_headers, if they know
# ZKOgl::Core; one that knows libraries of Qt that others do not has its own: zk_precompile_program_headers(<target>).
function(zk_precompile_program_headers target)
  if(ZKOGL_PRECOMPILE_HEADERS)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <cmath> <functional> <memory> <optional> <vector>
      <QApplication> <QHash> <QImage> <QPainter> <QPointer> <QTimer> <QVariant> <QWidget>)
  endif()
endfunction()

if(ZKOGL_PRECOMPILE_HEADERS AND NOT ZKOGL_GEOMETRY_ONLY)
  file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/headers/program.cpp CONTENT "")
  add_library(zk_program_headers OBJECT ${PROJECT_BINARY_DIR}/headers/program.cpp)
  target_link_libraries(zk_program_headers PRIVATE Qt6::Widgets zk_options)
  zk_precompile_program_headers(zk_program_headers)
endif()

# What takes time is the headers and what is made of their templates, and for several sources at once that is done once. What
# stands in an unnamed namespace then has to have a name of its own within the target.
# zk_compile_together(<target>...): after its libraries have been named.
function(zk_compile_together)
  if(ZKOGL_COMPILE_TOGETHER)
    set_target_properties(${ARGN} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    foreach(target IN LISTS ARGN)
      target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zk_together_options>)
    endforeach()
  endif()
endfunction()

# A name may be that of something in another source, and an unnamed namespace is the source's, not that of the file that
# includes it. A library's, as they have to come after those of zk_options.
add_library(zk_together_options INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(zk_together_options INTERFACE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

# Programs and libraries are found from each other's places, so that an installed tree can be moved.
# zk_set_install_rpath(<target> <folder that it is installed to>)
function(zk_set_install_rpath target folder)
  if(NOT BUILD_SHARED_LIBS OR WIN32)
    return()
  endif()
  set(here "$ORIGIN")
  if(APPLE)
    set(here "@loader_path")
  endif()
  cmake_path(ABSOLUTE_PATH folder BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
  cmake_path(IS_PREFIX CMAKE_INSTALL_PREFIX "${folder}" NORMALIZE inside)
  if(inside)
    file(RELATIVE_PATH way "${folder}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${here}/${way}")
  else()
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${CMAKE_INSTALL_FULL_LIBDIR}")
  endif()
endfunction()

# zk_add_unit(<name> SOURCES <file>... [DEPENDS <unit or library>...] [INTERNAL <header>...] [QT])
#   QT: the unit has classes that moc must read.
#   INTERNAL: headers that are not installed. They are for the unit's own sources.
#   What is installed belongs to the component Geometry, if the unit has no QT, or Core.
#   A static library, or with BUILD_SHARED_LIBS a shared one, which shows what its headers mark (zk/export.h).
function(zk_add_unit name)
  cmake_parse_arguments(PARSE_ARGV 1 unit "QT" "" "SOURCES;DEPENDS;INTERNAL")
  add_library(${name} ${unit_SOURCES})
  add_library(ZKOgl::${name} ALIAS ${name})
  target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>")
  target_link_libraries(${name} PUBLIC ${unit_DEPENDS} PRIVATE $<BUILD_INTERFACE:zk_options>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  string(REGEX REPLACE "^_" "" plain ${name})
  string(TOUPPER ${plain} plain)
  target_compile_definitions(${name} PRIVATE ${plain}_BUILT)
  set_property(GLOBAL APPEND PROPERTY ZKOGL_API_MACROS ${plain}_API)
  list(TRANSFORM unit_INTERNAL PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE internal)
  set_property(GLOBAL APPEND PROPERTY ZKOGL_INTERNAL_HEADERS ${internal})
  set(sources ${unit_SOURCES})
  list(FILTER sources INCLUDE REGEX "[.]cpp$")
  list(TRANSFORM sources PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  set_property(GLOBAL APPEND PROPERTY ZKOGL_UNIT_SOURCES ${sources})
  set_target_properties(${name} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  if(BUILD_SHARED_LIBS)
    target_compile_definitions(${name} PUBLIC ZKOGL_SHARED)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT APPLE AND NOT ZKOGL_SANITIZE)
      target_link_options(${name} PRIVATE LINKER:--no-undefined LINKER:--version-script=${ZKOGL_EXPORTS})
      set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${ZKOGL_EXPORTS})
    endif()
  endif()
  set(component Geometry)
  if(unit_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    set(component Core)
    zk_reuse_headers(zk_unit_headers ${name})
    if(ZKOGL_SANITIZE) # elsewhere each source shows what its own header, which it includes first, lacks of this library's
      zk_compile_together(${name})
    endif()
  endif()
  zk_install_unit(${name} ${component} "${unit_INTERNAL}")
endfunction()

# The library as libzkogl_<unit> with the headers of its folder, and of the one header for all of them.
function(zk_install_unit name component internal)
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME folder)
  string(REGEX REPLACE "^_" "" plain ${folder})
  set_target_properties(${name} PROPERTIES OUTPUT_NAME zkogl_${plain})
  if(NOT ZKOGL_INSTALL)
    return()
  endif()
  zk_set_install_rpath(${name} ${CMAKE_INSTALL_LIBDIR})
  install(TARGETS ${name} EXPORT ZKOgl${component}Targets
    ARCHIVE COMPONENT development
    LIBRARY COMPONENT libraries NAMELINK_COMPONENT development
    RUNTIME COMPONENT libraries
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zkogl)
  set(leave_out "")
  foreach(header IN LISTS internal)
    list(APPEND leave_out PATTERN ${header} EXCLUDE)
  endforeach()
  install(DIRECTORY . DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zkogl/zk/${folder} COMPONENT development
    FILES_MATCHING PATTERN *.h ${leave_out} PATTERN metafile EXCLUDE)
  install(FILES ../${folder}.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zkogl/zk COMPONENT development)
endfunction()

# zk_add_component(<name> <unit>...): what a program links to have them all, ZKOgl::<name>.
function(zk_add_component name)
  string(TOLOWER zkogl_${name} target)
  add_library(${target} INTERFACE)
  add_library(ZKOgl::${name} ALIAS ${target})
  target_link_libraries(${target} INTERFACE ${ARGN})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  if(ZKOGL_INSTALL)
    install(TARGETS ${target} EXPORT ZKOgl${name}Targets COMPONENT development)
  endif()
endfunction()
