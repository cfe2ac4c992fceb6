# add_protocols(target file...): the client side of Wayland protocols, generated from their descriptions in
# the package wayland-protocols, as <protocols/NAME.h>.
pkg_get_variable(wayland_protocols wayland-protocols pkgdatadir)
pkg_get_variable(wayland_scanner wayland-scanner wayland_scanner)
function(add_protocols target)
  set(folder ${PROJECT_BINARY_DIR}/wayland)
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${wayland_protocols})
    cmake_path(GET file STEM name)
    set(base ${folder}/protocols/${name})
    add_custom_command(OUTPUT ${base}.h ${base}.c DEPENDS ${file}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}/protocols
      COMMAND ${wayland_scanner} client-header ${file} ${base}.h
      COMMAND ${wayland_scanner} private-code ${file} ${base}.c VERBATIM)
    target_sources(${target} PRIVATE ${base}.c ${base}.h)
    set_source_files_properties(${base}.c PROPERTIES COMPILE_OPTIONS -w SKIP_UNITY_BUILD_INCLUSION ON)
  endforeach()
  target_include_directories(${target} SYSTEM PRIVATE ${folder})
endfunction()
