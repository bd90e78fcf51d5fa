# Runs with: ROOT, BUILD, SOURCE, WORK, COMPILER, SANITIZE.
function(step)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
                  ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${command}\nfailed with ${result}:\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
string(REPLACE ";" "," sanitizers "${SANITIZE}")
if(sanitizers)
  set(flags -DCMAKE_CXX_FLAGS=-fsanitize=${sanitizers})
endif()

step(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)

# What is installed of the library's own headers: all but those that stay here.
file(STRINGS ${ROOT}/cmake/internal-headers.txt internal)
file(GLOB_RECURSE expected RELATIVE ${ROOT} ${ROOT}/zk_quornex/*.h)
list(REMOVE_ITEM expected ${internal})
file(GLOB_RECURSE installed RELATIVE ${WORK}/prefix/include ${WORK}/prefix/include/*.h)
list(FILTER installed EXCLUDE REGEX "^zk_quornex/stubs/")
list(SORT expected)
list(SORT installed)
if(NOT installed STREQUAL expected)
  message(FATAL_ERROR "installed: ${installed}\nexpected: ${expected}")
endif()

step(${CMAKE_COMMAND} -S ${SOURCE}/consumer -B ${WORK}/build -G Ninja
     -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_COMPILER=${COMPILER} ${flags})
step(${CMAKE_COMMAND} --build ${WORK}/build)
step(${WORK}/build/consumer)
if(NOT output MATCHES "EMS=Installed/1 ManagedElement=7")
  message(FATAL_ERROR "the consumer printed: ${output}")
endif()
file(REMOVE_RECURSE ${WORK})
