# cmake -D program=FILE -D expected=FILE -P compare.cmake: fails unless the program prints what the file holds.
execute_process(COMMAND ${program} OUTPUT_VARIABLE printed ERROR_VARIABLE messages RESULT_VARIABLE status)
file(READ ${expected} text)
if(NOT status EQUAL 0 OR NOT messages STREQUAL "" OR NOT printed STREQUAL text)
   message(FATAL_ERROR "exit status ${status}\n${messages}printed:\n${printed}expected:\n${text}")
endif()
