# embed(target name folder FILES file... [PREFIX prefix]): embeds the files of the folder in the target as
# :/name/<file>, or below another prefix: the program is one file that may be copied anywhere.
function(embed target name folder)
  cmake_parse_arguments(EMBED "" "PREFIX" "FILES" ${ARGN})
  if(NOT EMBED_PREFIX)
    set(EMBED_PREFIX /${name})
  endif()
  set(entries "")
  list(TRANSFORM EMBED_FILES PREPEND ${folder}/ OUTPUT_VARIABLE paths)
  foreach(file path IN ZIP_LISTS EMBED_FILES paths)
    string(APPEND entries "<file alias=\"${file}\">${path}</file>\n")
  endforeach()
  set(base ${PROJECT_BINARY_DIR}/embedded/${name})
  file(CONFIGURE OUTPUT ${base}.qrc
    CONTENT "<RCC><qresource prefix=\"@EMBED_PREFIX@\">\n@entries@</qresource></RCC>\n" @ONLY)
  add_custom_command(OUTPUT ${base}.cpp DEPENDS ${base}.qrc ${paths}
    COMMAND Qt6::rcc --name ${name} --output ${base}.cpp ${base}.qrc VERBATIM)
  target_sources(${target} PRIVATE ${base}.cpp)
  set_source_files_properties(${base}.cpp PROPERTIES COMPILE_OPTIONS -w)
endfunction()
