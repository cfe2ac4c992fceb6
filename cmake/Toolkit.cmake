# add_toolkit_configuration(target): embeds Packaging/qt.conf in the target as :/qt/etc/qt.conf, so that the
# toolkit looks for none beside the program.
function(add_toolkit_configuration target)
  set(file ${PROJECT_SOURCE_DIR}/Packaging/qt.conf)
  set(base ${PROJECT_BINARY_DIR}/toolkit)
  file(CONFIGURE OUTPUT ${base}.qrc CONTENT
    "<RCC><qresource prefix=\"/qt/etc\"><file alias=\"qt.conf\">@file@</file></qresource></RCC>\n" @ONLY)
  add_custom_command(OUTPUT ${base}.cpp DEPENDS ${base}.qrc ${file}
    COMMAND Qt6::rcc --name toolkit --output ${base}.cpp ${base}.qrc VERBATIM)
  target_sources(${target} PRIVATE ${base}.cpp)
  set_source_files_properties(${base}.cpp PROPERTIES COMPILE_OPTIONS -w)
endfunction()
