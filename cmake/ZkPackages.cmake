# Debian packages: `./dev package`. What a package needs of others is found out by dpkg-shlibdeps, and for what programs
# are built with it is named here.

include_guard(GLOBAL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zkogl)
set(CPACK_PACKAGE_CONTACT "the ZKOgl developers <zkogl@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL development runtime)
if(BUILD_SHARED_LIBS)
  list(APPEND CPACK_COMPONENTS_ALL libraries)
endif()
if(TARGET zkogl_designer)
  list(APPEND CPACK_COMPONENTS_ALL designer)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

# Our packages need each other in the very same version.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

# By the SONAME, so that one of another version can be installed beside it.
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME libzkogl${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_RECOMMENDS zkogl-tools)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_COMPONENT_LIBRARIES_DESCRIPTION "The shared libraries of ZKOgl, for programs that use them.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzkogl-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "qt6-base-dev (>= 6.4), libqt6opengl6-dev (>= 6.4), qt6-tools-dev (>= 6.4), libgl-dev, libglu1-mesa-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS zkogl-tools)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "The headers of ZKOgl, and what CMake and pkg-config need to find them.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME zkogl-tools)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION graphics)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "The program that draws metafiles for programs with textures, and zkogl-doctor.")

set(CPACK_DEBIAN_DESIGNER_PACKAGE_NAME zkogl-designer)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_RECOMMENDS "designer-qt6, libzkogl-dev")
set(CPACK_COMPONENT_DESIGNER_DESCRIPTION "The components of ZKOgl in Qt Designer.")

if(BUILD_SHARED_LIBS)
  foreach(component DEVELOPMENT RUNTIME DESIGNER)
    set(CPACK_COMPONENT_${component}_DEPENDS libraries)
  endforeach()
  # Where dpkg-shlibdeps finds libraries that are not installed yet.
  foreach(unit _zkxyz _zkmath _zkxyarrays zkhost _zkcomtypes _zkdevice _zkoglcanvas _zkogltools _zkoglextools zkforms)
    get_target_property(folder ${unit} BINARY_DIR)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${folder})
  endforeach()
endif()

include(CPack)
