# Runs as a CTest script: install, configure the consumer, build it, run it.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run_step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "Step failed: ${ARGN}\n${out}\n${err}")
    endif()
    set(step_output "${out}" PARENT_SCOPE)
endfunction()

run_step(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
# The installed tool runs as it is, without a library path set.
if(EXISTS ${prefix}/bin/kobwb)
    run_step(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${prefix}/bin/kobwb --version)
    if(NOT step_output MATCHES "^kobwb ")
        message(FATAL_ERROR "The installed tool answered: ${step_output}")
    endif()
endif()
run_step(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix}
    "-DCMAKE_CXX_FLAGS=${SANITIZER_FLAGS}"
    "-DCMAKE_EXE_LINKER_FLAGS=${SANITIZER_FLAGS}")
run_step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run_step(${WORK_DIR}/build/consumer)
if(NOT step_output MATCHES "consumer ok")
    message(FATAL_ERROR "Unexpected consumer output: ${step_output}")
endif()

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
    set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
    run_step(${PKG_CONFIG} --cflags --libs KOBWBx)
    if(NOT step_output MATCHES "-lKOBWBx")
        message(FATAL_ERROR "pkg-config answered: ${step_output}")
    endif()
    run_step(${PKG_CONFIG} --variable=cxx_standard KOBWBx)
    if(NOT step_output MATCHES "^17")
        message(FATAL_ERROR "pkg-config states the C++ standard as: ${step_output}")
    endif()
endif()
