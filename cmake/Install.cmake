# What plug-in authors get: the kit's libraries and headers, a CMake package "AKKit" with the targets AKKit::Platform,
# AKKit::Kit and AKKit::Graphics and the function akkit_add_bundle, a pkg-config file "akkit"; and the host with its
# bundles and the one that examines hosts. The components are those of the packages (Packages.cmake).
include(CMakePackageConfigHelpers)

set(include_folder ${CMAKE_INSTALL_INCLUDEDIR}/akkit)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/AKKit)

set_target_properties(ak_platform PROPERTIES EXPORT_NAME Platform)
set_target_properties(ak_kit PROPERTIES EXPORT_NAME Kit OUTPUT_NAME AKKit)
set_target_properties(ak_graphics PROPERTIES EXPORT_NAME Graphics OUTPUT_NAME AKGraphics)
set_target_properties(ak_settings PROPERTIES EXPORT_NAME Settings)

install(TARGETS ak_settings ak_platform ak_kit ak_graphics EXPORT AKKitTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT platform
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(EXPORT AKKitTargets NAMESPACE AKKit:: DESTINATION ${package_folder} COMPONENT dev)

# A header of the name *_p.h is the project's own, and so are those of the bridge to the native layer.
install(DIRECTORY kit graphics DESTINATION ${include_folder} COMPONENT dev
  FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE PATTERN "native" EXCLUDE PATTERN "AKMacOS.h" EXCLUDE)
install(DIRECTORY platform/include/ DESTINATION ${include_folder}/platform COMPONENT dev
  FILES_MATCHING PATTERN "*.h")
install(FILES cmake/exports.map DESTINATION ${CMAKE_INSTALL_DATADIR}/akkit COMPONENT dev)

install(DIRECTORY examples DESTINATION share/doc/akkit-dev COMPONENT dev)

install(DIRECTORY examples/star examples/label examples/picture examples/kit DESTINATION ${CMAKE_INSTALL_DATADIR}/akkit/examples)

# What objecthost new-plugin begins with; the program finds it beside itself in the build, too.
install(DIRECTORY templates DESTINATION share/akkit COMPONENT dev)
file(GLOB_RECURSE template_files CONFIGURE_DEPENDS templates/*)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${template_files})
file(COPY templates DESTINATION ${CMAKE_BINARY_DIR}/share/akkit)

configure_package_config_file(cmake/AKKitConfig.cmake.in ${CMAKE_BINARY_DIR}/AKKitConfig.cmake
  INSTALL_DESTINATION ${package_folder}
  PATH_VARS CMAKE_INSTALL_DATADIR CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/AKKitConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/AKKitConfig.cmake ${CMAKE_BINARY_DIR}/AKKitConfigVersion.cmake cmake/AKKitBundle.cmake
  DESTINATION ${package_folder} COMPONENT dev)

# The file tells where the tree is by where it lies itself, so that the prefix need not be known here.
file(RELATIVE_PATH from_package_file /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" from_package_file ${from_package_file})
configure_file(cmake/akkit.pc.in ${CMAKE_BINARY_DIR}/akkit.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/akkit.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

# The program and the bundle find the native layer by where they lie themselves, so the whole tree may be moved; a
# package of the system's has it where the system looks.
set(plugin_folder lib/objecthost/plugins)
set(torture_folder lib/objecthost/torture)  # where bundles are not looked for
file(RELATIVE_PATH from_program /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
file(RELATIVE_PATH from_plugins /${plugin_folder} /${CMAKE_INSTALL_LIBDIR})
set(programs objecthost)
if(AK_WINDOW)
  list(APPEND programs objecthost-window)
endif()
if(NOT AK_PACKAGES)
  set_target_properties(${programs} PROPERTIES INSTALL_RPATH "$ORIGIN/${from_program}")
  set_target_properties(StdRectangle StdPicture HostTorture PROPERTIES INSTALL_RPATH "$ORIGIN/${from_plugins}")
endif()
install(TARGETS ${programs} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT host)
install(TARGETS StdRectangle StdPicture LIBRARY DESTINATION ${plugin_folder} COMPONENT host)
install(TARGETS HostTorture LIBRARY DESTINATION ${torture_folder} COMPONENT host)
