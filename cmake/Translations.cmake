# add_translations(target): compiles the texts of Packaging/translations, and embeds them in the target as
# :/translations/tessary_<language>.qm: the program is one file that may be copied anywhere.
find_program(LRELEASE lrelease HINTS /usr/lib/qt6/bin REQUIRED)

function(add_translations target)
  set(folder ${PROJECT_BINARY_DIR}/translations)
  file(MAKE_DIRECTORY ${folder})
  file(GLOB texts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Packaging/translations/*.ts)
  set(catalogues "")
  set(entries "")
  foreach(text IN LISTS texts)
    cmake_path(GET text STEM name)
    add_custom_command(OUTPUT ${folder}/${name}.qm DEPENDS ${text}
      COMMAND ${LRELEASE} -silent ${text} -qm ${folder}/${name}.qm
      VERBATIM)
    list(APPEND catalogues ${folder}/${name}.qm)
    string(APPEND entries "<file>${name}.qm</file>\n")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/translations.qrc
    CONTENT "<RCC><qresource prefix=\"/translations\">\n@entries@</qresource></RCC>\n" @ONLY)
  add_custom_command(OUTPUT ${folder}/translations.cpp
    DEPENDS ${folder}/translations.qrc ${catalogues}
    COMMAND Qt6::rcc --name translations
            --output ${folder}/translations.cpp ${folder}/translations.qrc
    VERBATIM)
  target_sources(${target} PRIVATE ${folder}/translations.cpp)
  set_source_files_properties(${folder}/translations.cpp PROPERTIES COMPILE_OPTIONS -w)
endfunction()
