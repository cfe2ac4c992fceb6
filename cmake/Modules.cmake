# add_module(name folder [EXCEPT path...] [INCLUDE folder]): an object library of the sources in a folder.
# EXCEPT names files and folders in it that belong to another module. Paths in include lines are
# relative to Sources, or to INCLUDE. Each header must compile alone. A source that includes its own
# header first shows that (Tools/check-includes); the target all_verify_interface_header_sets compiles
# the headers without a source.
function(add_module name folder)
  cmake_parse_arguments(MODULE "" "INCLUDE" "EXCEPT" ${ARGN})
  if(NOT MODULE_INCLUDE)
    set(MODULE_INCLUDE Sources)
  endif()
  set(base ${PROJECT_SOURCE_DIR}/${folder})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${base}/*.cpp)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${base}/*.h)
  foreach(file IN LISTS sources headers)
    foreach(path IN LISTS MODULE_EXCEPT)
      set(exception ${base}/${path})
      cmake_path(IS_PREFIX exception ${file} is_excepted)
      if(is_excepted)
        list(REMOVE_ITEM sources ${file})
        list(REMOVE_ITEM headers ${file})
      endif()
    endforeach()
  endforeach()
  # With CMAKE_UNITY_BUILD the sources of a folder are read as one file, and the headers that they share
  # once.
  foreach(source IN LISTS sources)
    cmake_path(GET source PARENT_PATH folder_of_source)
    cmake_path(RELATIVE_PATH folder_of_source BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder_of_source})
  endforeach()
  foreach(header IN LISTS headers)
    cmake_path(REPLACE_EXTENSION header LAST_ONLY cpp OUTPUT_VARIABLE own_source)
    if(own_source IN_LIST sources)
      list(REMOVE_ITEM headers ${header})
    endif()
  endforeach()
  add_library(${name} OBJECT ${sources})
  set_target_properties(${name} PROPERTIES UNITY_BUILD_MODE GROUP)
  target_sources(${name} PUBLIC FILE_SET HEADERS
    BASE_DIRS ${PROJECT_SOURCE_DIR}/${MODULE_INCLUDE} FILES ${headers})
  target_include_directories(${name} PUBLIC
    ${PROJECT_SOURCE_DIR}/Sources ${PROJECT_SOURCE_DIR}/${MODULE_INCLUDE})
  target_link_libraries(${name} PRIVATE tessary_warnings)
endfunction()
