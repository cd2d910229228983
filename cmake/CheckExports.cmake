# Fails if the library exports a symbol that is no public member of its one class, or lacks the name
# that programs load it by.
# Run as: cmake -DLIBRARY=<libptformat.so> -DSONAME=<name> -P CheckExports.cmake
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND nm -D --defined-only -C ${LIBRARY} OUTPUT_VARIABLE symbols
                COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
set(members 0)
foreach(symbol ${symbols})
  if(NOT symbol MATCHES " PTFFormat::[^ ]" OR symbol MATCHES "PTFFormat::State")
    message(SEND_ERROR "exported: ${symbol}")
  endif()
  math(EXPR members "${members} + 1")
endforeach()
if(members EQUAL 0)
  message(SEND_ERROR "${LIBRARY} exports nothing")
endif()

execute_process(COMMAND readelf -d ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
if(NOT dynamic MATCHES "SONAME[^\n]*\\[${SONAME}\\]")
  message(SEND_ERROR "${LIBRARY} is not ${SONAME}")
endif()
