# Runs doxygen on the API reference's configuration into WORK_DIR and fails
# on any warning, printing them all: an undocumented public member, a parameter
# without @param, a reference that leads nowhere.
# -D DOXYFILE, WORK_DIR
find_program(doxygen doxygen)
if(NOT doxygen)
    message(FATAL_ERROR "doxygen is missing: install doxygen (Debian package doxygen), "
                        "e.g. with scripts/install-deps.sh")
endif()
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})
# Later settings win: the same configuration, its output and log elsewhere.
file(READ ${DOXYFILE} config)
string(APPEND config "\nOUTPUT_DIRECTORY = ${WORK_DIR}\nWARN_LOGFILE = ${WORK_DIR}/warnings.log\n")
file(WRITE ${WORK_DIR}/Doxyfile "${config}")
execute_process(COMMAND ${doxygen} ${WORK_DIR}/Doxyfile WORKING_DIRECTORY ${WORK_DIR}
                RESULT_VARIABLE result)
file(READ ${WORK_DIR}/warnings.log warnings)
if(NOT result EQUAL 0 OR NOT warnings STREQUAL "")
    string(REGEX MATCHALL "\n[^ \n]" lines "\n${warnings}")
    list(LENGTH lines count)
    message(FATAL_ERROR "doxygen (exit ${result}), ${count} warning(s):\n${warnings}")
endif()
if(NOT EXISTS ${WORK_DIR}/html/index.html)
    message(FATAL_ERROR "doxygen wrote no ${WORK_DIR}/html/index.html")
endif()
