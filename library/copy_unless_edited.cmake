# cmake -D FROM=FILE -D TO=FILE -D MADE=FILE -P: copies FROM to TO unless TO was edited, which shows in
# its difference from MADE, a second copy of what was copied last.
if(EXISTS "${TO}")
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${TO}" "${MADE}"
                  RESULT_VARIABLE is_edited OUTPUT_QUIET ERROR_QUIET)
  if(is_edited)
    return()
  endif()
endif()
# TO first: a copy that was stopped between the two is only taken for an edited one.
configure_file("${FROM}" "${TO}" COPYONLY)
configure_file("${FROM}" "${MADE}" COPYONLY)
