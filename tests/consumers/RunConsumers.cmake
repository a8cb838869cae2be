# Installs the build into a fresh prefix, then builds and runs the consumer
# projects against it, as a launcher author would.
# -D BUILD_DIR, SOURCE_DIR, WORK_DIR, GENERATOR, CXX_COMPILER, QT_PREFIX,
#    CXX_LAUNCHER and CXX_FLAGS (may be empty)
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(JOIN " " command ${ARGN})
        message(FATAL_ERROR "failed (${result}): ${command}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# Only files are installed where the package puts headers: no empty folders.
file(GLOB_RECURSE folders LIST_DIRECTORIES true ${prefix}/include/qForms/*)
foreach(folder IN LISTS folders)
    if(IS_DIRECTORY ${folder})
        file(GLOB entries ${folder}/*)
        if(NOT entries)
            message(FATAL_ERROR "empty folder installed: ${folder}")
        endif()
    endif()
endforeach()

foreach(consumer headless view)
    set(build ${WORK_DIR}/${consumer})
    run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/consumers/${consumer} -B ${build} -G ${GENERATOR}
        -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
        "-DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
        "-DCMAKE_PREFIX_PATH=${prefix}\;${QT_PREFIX}")
    run(${CMAKE_COMMAND} --build ${build})
    # The view's page is the embedding example: it shows the sample host's game
    # and takes a picture of it.
    set(arguments "")
    if(consumer STREQUAL "view")
        set(arguments ${SOURCE_DIR}/data/host --screenshot ${WORK_DIR}/view.png)
    endif()
    run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=${WORK_DIR}/config
        XDG_DATA_HOME=${WORK_DIR}/data ${build}/${consumer} ${arguments})
endforeach()
if(NOT EXISTS ${WORK_DIR}/view.png)
    message(FATAL_ERROR "the view consumer drew no page")
endif()
