# add_translations(target): compiles the texts of Packaging/translations, and embeds them in the target as
# :/translations/tessary_<language>.qm.
find_program(LRELEASE lrelease HINTS /usr/lib/qt6/bin REQUIRED)

function(add_translations target)
  set(folder ${PROJECT_BINARY_DIR}/translations)
  file(MAKE_DIRECTORY ${folder})
  file(GLOB texts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Packaging/translations/*.ts)
  set(catalogues "")
  foreach(text IN LISTS texts)
    cmake_path(GET text STEM name)
    add_custom_command(OUTPUT ${folder}/${name}.qm DEPENDS ${text}
      COMMAND ${LRELEASE} -silent ${text} -qm ${folder}/${name}.qm
      VERBATIM)
    list(APPEND catalogues ${name}.qm)
  endforeach()
  embed(${target} translations ${folder} FILES ${catalogues})
endfunction()
