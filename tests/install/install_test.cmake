# Runs with: BUILD, SOURCE, WORK, COMPILER, SANITIZE.
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
step(${CMAKE_COMMAND} -S ${SOURCE}/consumer -B ${WORK}/build -G Ninja
     -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_COMPILER=${COMPILER} ${flags})
step(${CMAKE_COMMAND} --build ${WORK}/build)
step(${WORK}/build/consumer)
if(NOT output MATCHES "EMS=Installed/1 ManagedElement=7")
  message(FATAL_ERROR "the consumer printed: ${output}")
endif()
file(REMOVE_RECURSE ${WORK})
