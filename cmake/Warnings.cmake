# Every warning is an error in every target of the project. All sources in C are generated.
add_library(tessary_warnings INTERFACE)
set(warnings
  -Werror -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused -Wdouble-promotion -Wformat=2
  -Wnull-dereference -Wextra-semi -Wimplicit-fallthrough
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wuseless-cast>
  $<$<CXX_COMPILER_ID:Clang>:-Wno-keyword-macro>) # <xcb/xkb.h> needs a keyword renamed around it
target_compile_options(tessary_warnings INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${warnings}>")

# Sources that are compiled as one may use the same name, one for a function and one for a variable. And
# with more code to optimize at once, GCC sees null pointers in the standard library that are none; the
# benchmarks' build compiles each source by itself and has this warning.
if(CMAKE_UNITY_BUILD)
  target_compile_options(tessary_warnings INTERFACE -Wno-shadow -Wno-null-dereference)
endif()

if(TESSARY_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# The fuzzers' own programs also link the fuzzer.
if(TESSARY_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
