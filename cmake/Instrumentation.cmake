# Warnings of our own code, and what a preset asks the compiler to watch.

set(ZK_SANITIZE "" CACHE STRING "Sanitizers for everything built here, such as address;undefined")
option(ZK_COVERAGE "Count executed lines" OFF)

if(ZK_SANITIZE)
  list(JOIN ZK_SANITIZE "," sanitizers)
  add_compile_options(-fsanitize=${sanitizers} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${sanitizers})
  if("undefined" IN_LIST ZK_SANITIZE)
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()
if(ZK_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# The warnings every target of ours is built with; never passed on to users.
add_library(zk_warnings INTERFACE)
target_compile_options(zk_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion
                                             $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
                                             $<$<BOOL:${ZK_WERROR}>:-Werror>)
