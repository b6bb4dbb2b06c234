# Installs the built library into a fresh prefix, then configures, builds and runs the consumer
# project against that install alone. Run by ctest:
#   cmake -DBUILD_DIR=<library build> -DWORK_DIR=<scratch> -DCXX=<compiler> -P check.cmake
foreach(var BUILD_DIR WORK_DIR CXX)
  if(NOT DEFINED ${var})
    message(FATAL_ERROR "check.cmake needs -D${var}=...")
  endif()
endforeach()
set(source ${CMAKE_CURRENT_LIST_DIR})
set(prefix ${WORK_DIR}/prefix)
set(build ${WORK_DIR}/build)
file(REMOVE_RECURSE ${WORK_DIR})

function(step what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "consumer check: ${what} failed (${rc})")
  endif()
endfunction()

step("install" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
step("configure" ${CMAKE_COMMAND} -S ${source} -B ${build} -DCMAKE_PREFIX_PATH=${prefix}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release)
step("build" ${CMAKE_COMMAND} --build ${build})
step("run" ${build}/consumer)
