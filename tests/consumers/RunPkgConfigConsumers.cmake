# Installs the build into a fresh prefix, then builds the consumers' sources
# with nothing but the compiler and pkg-config, as a host without CMake would,
# and runs them.
# -D BUILD_DIR, SOURCE_DIR, WORK_DIR, CXX_COMPILER, LIB_DIR, CXX_FLAGS (may be empty)
find_program(pkg_config pkg-config)
if(NOT pkg_config)
    message(FATAL_ERROR "pkg-config is missing: install pkg-config (Debian package pkg-config)")
endif()
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

# The installed files first; the system's own folders still give Qt.
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIB_DIR}/pkgconfig)
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIB_DIR})
set(ENV{QT_QPA_PLATFORM} offscreen)
set(ENV{XDG_CONFIG_HOME} ${WORK_DIR}/config)
set(ENV{XDG_DATA_HOME} ${WORK_DIR}/data)
# The view's consumer is the README's embedding example, run on the sample host.
foreach(consumer IN ITEMS headless:qForms:tests/consumers/headless view:qFormsView:examples/embedding)
    string(REPLACE ":" ";" consumer ${consumer})
    list(GET consumer 0 name)
    list(GET consumer 1 package)
    list(GET consumer 2 folder)
    # -fPIC as every program that uses Debian's Qt needs it.
    set(command "${CXX_COMPILER} ${CXX_FLAGS} -fPIC ${SOURCE_DIR}/${folder}/main.cpp \
$(pkg-config --cflags --libs ${package}) -o ${WORK_DIR}/${name}")
    message(STATUS "${command}")
    execute_process(COMMAND sh -c ${command} COMMAND_ERROR_IS_FATAL ANY)
    set(arguments "")
    if(name STREQUAL "view")
        set(arguments ${SOURCE_DIR}/data/host --screenshot ${WORK_DIR}/view.png)
    endif()
    execute_process(COMMAND ${WORK_DIR}/${name} ${arguments} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
if(NOT EXISTS ${WORK_DIR}/view.png)
    message(FATAL_ERROR "the view consumer drew no page")
endif()
