# Installing for the desktop and packaging for Debian (cpack -G DEB, see
# scripts/package.sh). Included before any install rule, so that the default
# component below applies to all of them.
#
# Three packages, one a component:
#   runtime  libqforms1     the shared libraries
#   dev      libqforms-dev  headers, CMake package, and everything installed
#                           without a component (pkg-config files, the API
#                           reference, the licence)
#   tools    qforms-tools   qforms, qforms-launcher, the host folder, menu entry,
#                           icon, metainfo, manual pages, bash completion
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME dev)

set(QFORMS_APP_ID org.qforms.Launcher)
set(QFORMS_MAINTAINER "The qForms authors <maintainers@qforms.org>")
set(QFORMS_HOMEPAGE "https://qforms.org/")

# qforms_install_man_page(PAGE COMPONENT): installs the roff source PAGE
# (name.section) compressed, as Debian wants it and man reads it.
function(qforms_install_man_page page component)
    get_filename_component(name ${page} NAME)
    string(REGEX REPLACE ".*\\.([0-9])$" "\\1" section ${name})
    set(compressed ${CMAKE_CURRENT_BINARY_DIR}/man/${name}.gz)
    add_custom_command(OUTPUT ${compressed}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/man
        COMMAND ${CMAKE_COMMAND} -E copy ${page} ${CMAKE_CURRENT_BINARY_DIR}/man/${name}
        # -n: no name or time stamp inside, so the file is reproducible.
        COMMAND gzip -9nf ${CMAKE_CURRENT_BINARY_DIR}/man/${name}
        DEPENDS ${page} VERBATIM)
    add_custom_target(man_${name} ALL DEPENDS ${compressed})
    install(FILES ${compressed} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section}
            COMPONENT ${component})
endfunction()

# Debian wants a copyright file and a changelog in /usr/share/doc/<package>.
# They are installed only when a component is installed on its own, as CPack
# does, not by a plain cmake --install.
set(QFORMS_DEBIAN_DIR ${PROJECT_BINARY_DIR}/debian)
file(READ ${PROJECT_SOURCE_DIR}/LICENSE license)
string(REGEX REPLACE "^MIT License\n\n" "" license "${license}")
string(REGEX REPLACE "\n+$" "" license "${license}")
# The licence names no year; Debian wants one with the notice.
string(TIMESTAMP year "%Y" UTC)
string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
string(REPLACE "\n" "\n " license "${license}")
file(WRITE ${QFORMS_DEBIAN_DIR}/copyright
"Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: qForms
Upstream-Contact: ${QFORMS_MAINTAINER}
Source: ${QFORMS_HOMEPAGE}

Files: *
Copyright: ${year} The qForms authors
License: Expat
 ${license}
")
string(TIMESTAMP changelog_date "%a, %d %b %Y %H:%M:%S +0000" UTC)

set(components runtime dev tools)
set(packages libqforms1 libqforms-dev qforms-tools)
foreach(component package IN ZIP_LISTS components packages)
    set(doc ${QFORMS_DEBIAN_DIR}/${package})
    file(WRITE ${doc}/changelog
"${package} (${PROJECT_VERSION}) unstable; urgency=medium

  * Release ${PROJECT_VERSION}.

 -- ${QFORMS_MAINTAINER}  ${changelog_date}
")
    execute_process(COMMAND gzip -9nf ${doc}/changelog COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${QFORMS_DEBIAN_DIR}/copyright ${doc}/changelog.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
            COMPONENT ${component} EXCLUDE_FROM_ALL)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
    set(CPACK_DEBIAN_${upper}_FILE_NAME DEB-DEFAULT)
endforeach()

set(CPACK_PACKAGE_NAME qforms)
set(CPACK_PACKAGE_VENDOR "The qForms authors")
set(CPACK_PACKAGE_CONTACT ${QFORMS_MAINTAINER})
set(CPACK_PACKAGE_HOMEPAGE_URL ${QFORMS_HOMEPAGE})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
# Each package's description starts with its own summary line; without this,
# CPack would put the project's description above every one of them.
file(WRITE ${QFORMS_DEBIAN_DIR}/CPackProjectConfig.cmake
     "unset(CPACK_PACKAGE_DESCRIPTION_SUMMARY)\n")
set(CPACK_PROJECT_CONFIG_FILE ${QFORMS_DEBIAN_DIR}/CPackProjectConfig.cmake)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The tools link the libraries of the build tree, which no installed package has.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# A shlibs file (for the packages that link the libraries) and ldconfig through
# a trigger; CPack still adds its own ldconfig call to postinst and postrm.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
file(WRITE ${QFORMS_DEBIAN_DIR}/libqforms1/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${QFORMS_DEBIAN_DIR}/libqforms1/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "options control for game launchers (Qt 6)
qForms builds a game's option widgets from a per-game INI file (.qgd), ties
them together with simple rules, keeps the player's choices, checks whether
the game is installed and which version it is, and lists its mods and config
files. libqForms needs Qt Core only; libqFormsView is its Qt Widgets view.
.
This package holds the shared libraries.")

set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "qt6-base-dev")
set(CPACK_COMPONENT_DEV_DEPENDS runtime)
set(CPACK_COMPONENT_DEV_DESCRIPTION "options control for game launchers (Qt 6) - development files
qForms builds a game's option widgets from a per-game INI file (.qgd), ties
them together with simple rules, keeps the player's choices, checks whether
the game is installed and which version it is, and lists its mods and config
files.
.
This package holds the headers and the CMake package (find_package(qForms))
for launchers that embed the control.")

# Not "games": Debian keeps that section for packages with programs in /usr/games.
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "xdg-utils")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "wine")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "game launcher Quillmarsh 2 and the qforms authoring tool
Quillmarsh 2 (qforms-launcher) lists games and gives each a page with its
folder, options, mods, extra parameters and config files, and starts the
game, Windows games through Wine.
.
qforms checks the game data files (.qgd) of the qForms options control like
a compiler does (qforms lint), draws their pages (qforms preview) and reads
single values and program versions.")

include(CPack)
