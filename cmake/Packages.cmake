# Debian packages, made by cpack where AK_PACKAGES is on (scripts/packages): the program, the native layer, and what
# plug-in authors need.
if(NOT AK_PACKAGES)
  return()
endif()

set(maintainer "The authors of AKKit <authors@objecthost.invalid>")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${maintainer})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL host platform dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(same_version "(= ${PROJECT_VERSION}-1)")
set(CPACK_DEBIAN_HOST_PACKAGE_NAME objecthost)
set(CPACK_DEBIAN_HOST_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS "libakplatform ${same_version}, librsvg2-common") # which shows the icons
set(CPACK_DEBIAN_HOST_PACKAGE_RECOMMENDS "fonts-dejavu-core")
set(CPACK_DEBIAN_HOST_PACKAGE_SUGGESTS akkit-dev)
set(CPACK_COMPONENT_HOST_DESCRIPTION "drawing program whose objects come from plug-in bundles
Documents of drawn objects on layers, changed in a window, by commands and by
scripts, with undo of every change, and drawn as PNG, JPEG, TIFF, PDF and SVG.
What the objects are is up to plug-in bundles; a rectangle is there.")
set(CPACK_DEBIAN_PLATFORM_PACKAGE_NAME libakplatform)
set(CPACK_DEBIAN_PLATFORM_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_PLATFORM_DESCRIPTION "native drawing layer of objecthost and its plug-in bundles
Bitmaps, PDF and SVG pages, text and image files for the host and the bundles
that it loads, which draw through one copy of this library.")
file(WRITE ${CMAKE_BINARY_DIR}/papers/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_PLATFORM_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/papers/triggers)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME akkit-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libakplatform ${same_version}")
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS "objecthost ${same_version}, cmake, g++")
set(CPACK_COMPONENT_DEV_DESCRIPTION "kit for plug-in bundles of objecthost
Headers and libraries of the object kit and its graphics layer, a CMake
package, a pkg-config file, examples, and the template that a plug-in begins
with.")

# Who has what was made here, and since when, for each package.
set(papers ${CMAKE_BINARY_DIR}/papers)
file(WRITE ${papers}/copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: AKKit

Files: *
Copyright: 2026 The authors of AKKit
License: proprietary
 All rights reserved by the authors.
")
execute_process(COMMAND git log -1 --format=%cD WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT date)
  execute_process(COMMAND date -R OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()
foreach(component host platform dev)
  string(TOUPPER ${component} upper)
  set(name ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(folder ${papers}/${name})
  file(WRITE ${folder}/changelog.Debian "${name} (${PROJECT_VERSION}-1) unstable; urgency=medium

  * Packages of version ${PROJECT_VERSION}.

 -- ${maintainer}  ${date}
")
  configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${folder}/changelog COPYONLY)
  execute_process(COMMAND gzip -9nf changelog changelog.Debian WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${papers}/copyright ${folder}/changelog.gz ${folder}/changelog.Debian.gz
    DESTINATION share/doc/${name} COMPONENT ${component})
endforeach()
# What a bundle is compiled with is for pkg-config to say.
file(WRITE ${papers}/overrides "akkit-dev: pkg-config-bad-directive -fPIC *\n"
  "akkit-dev: pkg-config-bad-directive -fvisibility=hidden *\n")
install(FILES ${papers}/overrides DESTINATION share/lintian/overrides RENAME akkit-dev COMPONENT dev)
include(CPack)
