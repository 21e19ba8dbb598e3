# Runs PROGRAM, a command as a list, and compares what it prints with the file EXPECTED. The ends of lines are
# those of the platform.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
file(READ ${EXPECTED} expected)
string(REPLACE "\r" "" printed "${printed}")
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "printed:\n${printed}\nexpected, ${EXPECTED}:\n${expected}")
endif()
