# Installs the build BUILD to a prefix of its own, builds the project SOURCE against it with the
# cache entries OPTIONS, and compares what it prints for LOG with EXPECT.
function(must_work)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
                    ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
must_work(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
must_work(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -G ${GENERATOR}
          -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_COMPILER=${COMPILER}
          -DCMAKE_CXX_FLAGS=${FLAGS} ${OPTIONS})
must_work(${CMAKE_COMMAND} --build ${WORK}/build)
must_work(${WORK}/build/consumer ${LOG})
string(STRIP "${output}" output)
if(NOT output STREQUAL EXPECT)
    message(FATAL_ERROR "the consumer printed \"${output}\" instead of \"${EXPECT}\"")
endif()
