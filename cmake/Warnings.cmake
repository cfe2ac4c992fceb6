# Every warning is an error in every target of the project.
add_library(tessary_warnings INTERFACE)
target_compile_options(tessary_warnings INTERFACE
  -Werror -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused -Wdouble-promotion -Wformat=2
  -Wnull-dereference -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wuseless-cast
  -Wextra-semi -Wimplicit-fallthrough)

if(TESSARY_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
