# Included: ler_embed_text(TARGET FILE NAME) turns FILE into the list of bytes NAME.inc, which a source of TARGET includes
# between the braces of an array. It is written anew when FILE changes. (A string literal would do only up to 65,536
# characters, the length that compilers have to take.)
#
# Run as a script with INPUT and OUTPUT: writes that list.

if(CMAKE_SCRIPT_MODE_FILE)
   file(READ ${INPUT} bytes HEX)
   string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
   string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
   file(WRITE ${OUTPUT} "${bytes}\n")
   return()
endif()

set(LER_EMBED_TEXT_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

function(ler_embed_text TARGET FILE NAME)
   set(input ${CMAKE_CURRENT_SOURCE_DIR}/${FILE})
   set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded/${NAME}.inc)
   add_custom_command(OUTPUT ${output}
                      COMMAND ${CMAKE_COMMAND} -DINPUT=${input} -DOUTPUT=${output} -P ${LER_EMBED_TEXT_SCRIPT}
                      DEPENDS ${input} ${LER_EMBED_TEXT_SCRIPT} VERBATIM)
   target_sources(${TARGET} PRIVATE ${output})
   target_include_directories(${TARGET} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/embedded)
endfunction()
