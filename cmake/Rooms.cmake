# add_room(name folder [EXCEPT path...] [INCLUDE folder]): an object library of the folder's sources,
# whose headers must each compile alone: those that their own source does not include before all others
# (Tools/check-includes) are in the target all_verify_interface_header_sets. Includes are
# written from INCLUDE, which is Sources unless told otherwise. What stands below an EXCEPT, a file or
# a folder, is left to others.
function(add_room name folder)
  cmake_parse_arguments(ROOM "" "INCLUDE" "EXCEPT" ${ARGN})
  if(NOT ROOM_INCLUDE)
    set(ROOM_INCLUDE Sources)
  endif()
  set(base ${PROJECT_SOURCE_DIR}/${folder})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${base}/*.cpp)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${base}/*.h)
  foreach(file IN LISTS sources headers)
    foreach(path IN LISTS ROOM_EXCEPT)
      set(exception ${base}/${path})
      cmake_path(IS_PREFIX exception ${file} is_excepted)
      if(is_excepted)
        list(REMOVE_ITEM sources ${file})
        list(REMOVE_ITEM headers ${file})
      endif()
    endforeach()
  endforeach()
  # The analysis reads a folder's sources as one, and the headers that they share once.
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
    BASE_DIRS ${PROJECT_SOURCE_DIR}/${ROOM_INCLUDE} FILES ${headers})
  target_include_directories(${name} PUBLIC
    ${PROJECT_SOURCE_DIR}/Sources ${PROJECT_SOURCE_DIR}/${ROOM_INCLUDE})
  target_link_libraries(${name} PRIVATE tessary_warnings)
endfunction()
