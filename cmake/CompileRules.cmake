# How every target of the project is compiled: warnings, floating point, sanitizers.
add_library(tanrove_compile_rules INTERFACE)

target_compile_options(tanrove_compile_rules INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2
  # The same session gives the same bytes on every machine and from every compiler.
  -ffp-contract=off)

# gcc 12 sees writes past the end of vectors at -O3 that are not there; -O2 is as fast here.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

# gcc 12 sees overlapping copies inside std::string's own operator+ as well.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(tanrove_compile_rules INTERFACE -Wno-restrict)
endif()

if(TANROVE_WERROR)
  target_compile_options(tanrove_compile_rules INTERFACE -Werror)
endif()

if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  target_compile_definitions(tanrove_compile_rules INTERFACE _GLIBCXX_ASSERTIONS)
endif()

if(TANROVE_SANITIZE)
  target_compile_options(tanrove_compile_rules INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tanrove_compile_rules INTERFACE -fsanitize=address,undefined)
endif()

if(TANROVE_FUZZ)
  target_compile_options(tanrove_compile_rules INTERFACE -fsanitize=fuzzer-no-link)
endif()
