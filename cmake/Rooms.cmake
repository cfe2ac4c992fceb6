# add_room(name folder [EXCEPT file...] [INCLUDE folder]): an object library of the folder's sources,
# whose headers must each compile alone (target all_verify_interface_header_sets). Includes are
# written from INCLUDE, which is Sources unless told otherwise.
function(add_room name folder)
  cmake_parse_arguments(ROOM "" "INCLUDE" "EXCEPT" ${ARGN})
  if(NOT ROOM_INCLUDE)
    set(ROOM_INCLUDE Sources)
  endif()
  set(base ${PROJECT_SOURCE_DIR}/${folder})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${base}/*.cpp)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${base}/*.h)
  foreach(file IN LISTS ROOM_EXCEPT)
    list(REMOVE_ITEM sources ${base}/${file})
  endforeach()
  add_library(${name} OBJECT ${sources})
  target_sources(${name} PUBLIC FILE_SET HEADERS
    BASE_DIRS ${PROJECT_SOURCE_DIR}/${ROOM_INCLUDE} FILES ${headers})
  target_include_directories(${name} PUBLIC
    ${PROJECT_SOURCE_DIR}/Sources ${PROJECT_SOURCE_DIR}/${ROOM_INCLUDE})
  target_link_libraries(${name} PRIVATE tessary_warnings)
endfunction()
