# Installs the build below WORK_DIR, builds the consumer against it alone, and runs it.
function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed (${result}): ${ARGV}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja
    -D CMAKE_PREFIX_PATH=${WORK_DIR}/prefix -D CMAKE_CXX_COMPILER=${CXX_COMPILER}
    -D CMAKE_CXX_COMPILER_LAUNCHER=${CXX_COMPILER_LAUNCHER} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${WORK_DIR}/prefix/${LIBDIR} ${WORK_DIR}/build/consumer)
# The installed program finds its libraries by itself.
run(${WORK_DIR}/prefix/bin/vexa-workbench --version)
