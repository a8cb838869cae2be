# pkg-config files for hosts built without CMake (Meson, make), installed
# beside the CMake package. They find the prefix from where they lie
# (${pcfiledir}), so a copied or DESTDIR-staged tree stays usable.
set(QFORMS_PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
    set(QFORMS_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
    set(QFORMS_PC_LIBDIR ${CMAKE_INSTALL_FULL_LIBDIR})
    set(QFORMS_PC_INCLUDEDIR ${CMAKE_INSTALL_FULL_INCLUDEDIR}/qForms)
else()
    file(RELATIVE_PATH up /prefix/${QFORMS_PC_DIR} /prefix)
    string(REGEX REPLACE "/$" "" up ${up})
    set(QFORMS_PC_PREFIX "\${pcfiledir}/${up}")
    set(QFORMS_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
    set(QFORMS_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}/qForms")
endif()
set(QFORMS_PC_QT "${Qt6_VERSION_MAJOR}.${Qt6_VERSION_MINOR}")

# -std=c++20 is in Cflags because the headers need it (defaulted comparisons,
# requires-expressions, std::erase_if) and compilers still default to C++17;
# the CMake targets carry the same as a usage requirement. -fPIC, which Qt
# built with reduce-relocations needs of every program that uses it, is not:
# Debian's packages refuse code-generation flags in .pc files, and Qt's own
# leave it out too, so a host adds it as for any Qt program. Without it a
# program built as PIE gets its own copies of Qt's meta-objects, and
# qobject_cast and findChildren on the view's widgets find nothing.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/pkgconfig/qForms.pc @ONLY CONTENT [[
prefix=@QFORMS_PC_PREFIX@
libdir=@QFORMS_PC_LIBDIR@
includedir=@QFORMS_PC_INCLUDEDIR@

Name: qForms
Description: @PROJECT_DESCRIPTION@, headless (Qt Core only)
Version: @PROJECT_VERSION@
Requires: Qt6Core >= @QFORMS_PC_QT@
Libs: -L${libdir} -lqForms
Cflags: -I${includedir} -std=c++20
]])
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/pkgconfig/qFormsView.pc @ONLY CONTENT [[
prefix=@QFORMS_PC_PREFIX@
libdir=@QFORMS_PC_LIBDIR@
includedir=@QFORMS_PC_INCLUDEDIR@

Name: qFormsView
Description: @PROJECT_DESCRIPTION@, its Qt Widgets view
Version: @PROJECT_VERSION@
Requires: qForms = @PROJECT_VERSION@, Qt6Widgets >= @QFORMS_PC_QT@
Libs: -L${libdir} -lqFormsView
Cflags: -I${includedir}
]])
install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/qForms.pc ${PROJECT_BINARY_DIR}/pkgconfig/qFormsView.pc
        DESTINATION ${QFORMS_PC_DIR})
