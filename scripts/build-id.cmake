# Writes OUT from TEMPLATE with VERSION and the commit of SOURCE as TALLYVANE_BUILD, "unknown" outside a checkout. Run at
# every build; the file changes only when what it says does.
find_package(Git QUIET)
set(TALLYVANE_BUILD unknown)
if(GIT_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --short HEAD WORKING_DIRECTORY ${SOURCE}
                  OUTPUT_VARIABLE hash RESULT_VARIABLE failed OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(NOT failed)
    set(TALLYVANE_BUILD ${hash})
  endif()
endif()
set(PROJECT_VERSION ${VERSION})
configure_file(${TEMPLATE} ${OUT} @ONLY)
