# add_symbol_pixmaps(target): draws the symbols for panels that do not find them in an icon theme, and
# embeds them in the target as :/symbols/<name>/<size>.png, where the program finds both lists.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)

function(add_symbol_pixmaps target)
  set(style ${PROJECT_SOURCE_DIR}/Packaging/icons/pixmap.css)
  set(folder ${PROJECT_BINARY_DIR}/symbols)
  foreach(symbol display 1.square 2.square info.circle.fill)
    string(REPLACE . - name ${symbol})
    set(drawing ${PROJECT_SOURCE_DIR}/Packaging/icons/hicolor/symbolic/apps)
    string(APPEND drawing /org.tessary.Tessary-${name}-symbolic.svg)
    file(MAKE_DIRECTORY ${folder}/${symbol})
    foreach(size 16 22 24 32 48 64)
      add_custom_command(OUTPUT ${folder}/${symbol}/${size}.png DEPENDS ${drawing} ${style}
        COMMAND ${RSVG_CONVERT} --stylesheet ${style} --width ${size} --height ${size}
                --output ${folder}/${symbol}/${size}.png ${drawing}
        VERBATIM)
      list(APPEND pixmaps ${symbol}/${size}.png)
    endforeach()
  endforeach()
  embed(${target} symbols ${folder} FILES ${pixmaps})
endfunction()

install(DIRECTORY Packaging/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
