# akkit_add_bundle(NAME SOURCE...): a plug-in bundle NAME.so.
#
# A bundle exports pluginMain and nothing else, and has no unique symbols, which would keep it from being unloaded. It
# is linked with its own copy of the kit. Where objecthost is found, a test NAME.validate asks the bundle to pass the
# validator's checks at level 5; AKKIT_OBJECTHOST names another objecthost.
function(akkit_add_bundle name)
  add_library(${name} MODULE ${ARGN})
  target_link_libraries(${name} PRIVATE AKKit::Graphics)
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    BUILD_WITH_INSTALL_RPATH ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    LINK_DEPENDS ${AKKit_EXPORTS})
  # Slots hold functions at even addresses.
  target_compile_options(${name} PRIVATE -falign-functions=16 $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  target_link_options(${name} PRIVATE
    -Wl,--version-script=${AKKit_EXPORTS} -Wl,--exclude-libs,ALL -Wl,--gc-sections -Wl,-z,defs)
  if(AKKIT_OBJECTHOST)
    add_test(NAME ${name}.validate COMMAND ${AKKIT_OBJECTHOST} validate $<TARGET_FILE:${name}>)
  endif()
endfunction()

# Here and not in the function, in whose scope alone it would hold.
find_program(AKKIT_OBJECTHOST objecthost HINTS ${AKKit_PROGRAMS})
if(AKKIT_OBJECTHOST)
  enable_testing()
endif()
