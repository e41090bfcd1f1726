# ak_own_bundle(TARGET FOLDER): makes a module of the tree a bundle as authors' are (AKKitBundle.cmake): it exports
# pluginMain and nothing else, and names no path of the machine that builds it, since the native layer is the host's.
# FOLDER lies in the build folder.
function(ak_own_bundle target folder)
  set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  if(APPLE)
    set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.list)
  endif()
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    BUILD_WITH_INSTALL_RPATH ON
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${folder}
    LINK_DEPENDS ${exports})
  target_link_libraries(${target} PRIVATE ak_graphics)
  if(APPLE)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "@loader_path")
    target_link_options(${target} PRIVATE -Wl,-exported_symbols_list,${exports} -Wl,-dead_strip)
    return()  # a module is linked with -bundle by itself
  endif()
  target_link_options(${target} PRIVATE -Wl,--version-script=${exports} -Wl,--exclude-libs,ALL -Wl,--gc-sections)
  if(NOT AK_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
endfunction()
