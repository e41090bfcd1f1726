# Translations: po/DOMAIN/LANGUAGE.po becomes share/locale/LANGUAGE/LC_MESSAGES/DOMAIN.mo in the build, and installed.
find_program(AK_MSGFMT msgfmt REQUIRED)

set(catalogues)
file(GLOB po_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/po/*/*.po)
foreach(po ${po_files})
  get_filename_component(language ${po} NAME_WE)
  get_filename_component(domain_folder ${po} DIRECTORY)
  get_filename_component(domain ${domain_folder} NAME)
  set(place share/locale/${language}/LC_MESSAGES)
  set(catalogue ${CMAKE_BINARY_DIR}/${place}/${domain}.mo)
  add_custom_command(OUTPUT ${catalogue}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/${place}
    COMMAND ${AK_MSGFMT} --check-format --check-domain -o ${catalogue} ${po}
    DEPENDS ${po} VERBATIM)
  list(APPEND catalogues ${catalogue})
  install(FILES ${catalogue} DESTINATION ${place} COMPONENT host)
endforeach()
add_custom_target(catalogues ALL DEPENDS ${catalogues})
