# Installs a build into a folder of its own and does there what the tutorial says.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${output}")
endif()
execute_process(COMMAND ${PYTHON} ${TEST} ${PAGE} ${PREFIX} RESULT_VARIABLE status)
file(REMOVE_RECURSE ${PREFIX})
if(NOT status EQUAL 0)
  message(FATAL_ERROR "The tutorial is not what happens")
endif()
