# add_room(name folder [EXCEPT path...] [INCLUDE folder]): an object library of the folder's sources,
# whose headers must each compile alone (target all_verify_interface_header_sets). Includes are
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
  add_library(${name} OBJECT ${sources})
  target_sources(${name} PUBLIC FILE_SET HEADERS
    BASE_DIRS ${PROJECT_SOURCE_DIR}/${ROOM_INCLUDE} FILES ${headers})
  target_include_directories(${name} PUBLIC
    ${PROJECT_SOURCE_DIR}/Sources ${PROJECT_SOURCE_DIR}/${ROOM_INCLUDE})
  target_link_libraries(${name} PRIVATE tessary_warnings)
endfunction()
