# Read by CTest, with `python`, `lershow` and `golden` set: one test for each directory of golden views.
file(GLOB entries "${golden}/*")
foreach(entry IN LISTS entries)
   get_filename_component(case "${entry}" NAME)
   if(IS_DIRECTORY "${entry}" AND NOT case STREQUAL "__pycache__")
      add_test("golden.${case}" "${python}" -B "${golden}/run.py" --lershow "${lershow}" "${entry}")
      set_tests_properties("golden.${case}" PROPERTIES LABELS golden)
   endif()
endforeach()
