# What makes an installed library one that others find: the CMake package and the pkg-config files.

include_guard(GLOBAL)
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZKOgl)

install(EXPORT ZKOglGeometryTargets NAMESPACE ZKOgl:: DESTINATION ${package_folder} COMPONENT development)
set(components Geometry)
if(NOT ZKOGL_GEOMETRY_ONLY)
  install(EXPORT ZKOglCoreTargets NAMESPACE ZKOgl:: DESTINATION ${package_folder} COMPONENT development)
  list(APPEND components Core)
endif()

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ZKOglConfig.cmake.in ${PROJECT_BINARY_DIR}/ZKOglConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZKOglConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZKOglConfig.cmake ${PROJECT_BINARY_DIR}/ZKOglConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

# zk_install_pc(<name> <description> <libraries> <packages of their headers> <packages that they need beyond those>)
function(zk_install_pc name description libraries requires needs)
  set(ZK_PC_NAME ${name})
  set(ZK_PC_DESCRIPTION ${description})
  set(ZK_PC_LIBRARIES ${libraries})
  # A shared library brings what it needs along, with a static one the program is linked to that.
  if(BUILD_SHARED_LIBS)
    set(ZK_PC_REQUIRES "${requires}")
    set(ZK_PC_REQUIRES_PRIVATE "${needs}")
    set(ZK_PC_DEFINES " -DZKOGL_SHARED")
  else()
    set(ZK_PC_REQUIRES "${requires} ${needs}")
    set(ZK_PC_REQUIRES_PRIVATE "")
    set(ZK_PC_DEFINES "")
  endif()
  # From the file's own place, so that a tree that has been moved is still right.
  file(RELATIVE_PATH ZK_PC_UP /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/zkogl.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()

zk_install_pc(zkogl-geometry "Points, matrices, frames and polygons" "-lzkogl_zkxyarrays -lzkogl_zkmath -lzkogl_zkxyz" "" "")
if(NOT ZKOGL_GEOMETRY_ONLY)
  zk_install_pc(zkogl "${PROJECT_DESCRIPTION}"
    "-lzkogl_forms -lzkogl_zkoglextools -lzkogl_zkogltools -lzkogl_zkoglcanvas -lzkogl_zkdevice -lzkogl_zkcomtypes -lzkogl_host"
    "zkogl-geometry Qt6Widgets" "Qt6UiTools gl glu")
endif()
