# The API reference: HTML from the comments of exactly the installed headers
# (the header sets of qForms and qFormsView), by Doxygen. The target "docs"
# exists when doxygen is found; "install" puts what it built in share/doc/qForms.
option(QFORMS_BUILD_DOCS "Build the API reference with the default target (needs doxygen)" OFF)
find_program(QFORMS_DOXYGEN doxygen)
if(QFORMS_BUILD_DOCS AND NOT QFORMS_DOXYGEN)
    message(FATAL_ERROR "QFORMS_BUILD_DOCS needs doxygen (Debian package doxygen)")
endif()

set(QFORMS_API_HEADERS)
foreach(target qForms qFormsView)
    get_target_property(headers ${target} HEADER_SET)
    list(APPEND QFORMS_API_HEADERS ${headers})
endforeach()
list(JOIN QFORMS_API_HEADERS " \\\n                         " QFORMS_API_DOCS_INPUT)
set(QFORMS_API_DOCS_DIR ${PROJECT_BINARY_DIR}/docs/api)
configure_file(${PROJECT_SOURCE_DIR}/docs/api/Doxyfile.in ${QFORMS_API_DOCS_DIR}/Doxyfile @ONLY)

if(QFORMS_DOXYGEN)
    set(all)
    if(QFORMS_BUILD_DOCS)
        set(all ALL)
    endif()
    add_custom_target(docs ${all}
        COMMAND ${QFORMS_DOXYGEN} ${QFORMS_API_DOCS_DIR}/Doxyfile
        DEPENDS ${QFORMS_API_HEADERS} ${QFORMS_API_DOCS_DIR}/Doxyfile
        WORKING_DIRECTORY ${QFORMS_API_DOCS_DIR}
        COMMENT "API reference in ${QFORMS_API_DOCS_DIR}/html"
        VERBATIM)
endif()
install(DIRECTORY ${QFORMS_API_DOCS_DIR}/html DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL)

# The check runs doxygen itself, so that it needs no build of "docs" and finds
# a doxygen installed after configuring.
if(QFORMS_BUILD_TESTS)
    add_test(NAME ApiReference.EveryPublicMemberIsDocumented
        COMMAND ${CMAKE_COMMAND} -DDOXYFILE=${QFORMS_API_DOCS_DIR}/Doxyfile
            -DWORK_DIR=${PROJECT_BINARY_DIR}/tests/api-docs
            -P ${PROJECT_SOURCE_DIR}/cmake/CheckApiDocs.cmake)
endif()
