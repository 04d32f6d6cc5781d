# One set of flags for every target: C++20, all warnings, each an error.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(quorvelant_flags INTERFACE)
target_compile_options(quorvelant_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion
                                                  -Wshadow -Wnon-virtual-dtor)

option(QUORVELANT_WERROR "Warnings are errors; off where another compiler or other flags build a package" ON)
set(QUORVELANT_SANITIZE "" CACHE STRING "Sanitizers for every target, e.g. address,undefined")
if(QUORVELANT_SANITIZE)  # instrumented code raises false warnings, so they are no errors here
  add_compile_options(-fsanitize=${QUORVELANT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUORVELANT_SANITIZE})
  find_program(LLD ld.lld)
  if(LLD)  # a third of the time, and there are fifty programs to link
    add_link_options(-fuse-ld=lld)
  endif()
elseif(QUORVELANT_WERROR)
  target_compile_options(quorvelant_flags INTERFACE -Werror)
endif()
