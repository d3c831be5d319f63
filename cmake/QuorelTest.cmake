# quorel_test(name USES folders QT modules SOURCES files… [INNER folders…] [TIMEOUT seconds] [NEEDS targets…])
# One executable tests/<folder>/<name>.cpp, run under CTest without a display and with a home of its own.
# It sees all headers of the folder that its own is named for, and of those behind INNER.
# NEEDS: programs that the test starts; they lie in QUOREL_BIN and their names end in QUOREL_SUFFIX, both literals.
function(quorel_test name)
    cmake_parse_arguments(A "" "TIMEOUT" "USES;QT;SOURCES;INNER;NEEDS" ${ARGN})
    if(NOT A_SOURCES)
        set(A_SOURCES ${name}.cpp)
    endif()
    if(NOT A_TIMEOUT)
        set(A_TIMEOUT 120)
    endif()
    add_executable(${name} ${A_SOURCES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
    list(TRANSFORM A_USES PREPEND quorel_)
    list(TRANSFORM A_QT PREPEND Qt6::)
    target_compile_definitions(${name} PRIVATE QUOREL_BIN="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
        QUOREL_SOURCE="${PROJECT_SOURCE_DIR}" QUOREL_BUILD="${PROJECT_BINARY_DIR}" QUOREL_SUFFIX="${CMAKE_EXECUTABLE_SUFFIX}")
    target_link_libraries(${name} PRIVATE quorel_support ${A_USES} ${A_QT} Qt6::Test quorel_warnings)
    quorel_use_pch(${name} tests)
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    quorel_inner(${name} ${folder} ${A_INNER})
    if(A_NEEDS)
        add_dependencies(${name} ${A_NEEDS})
    endif()
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/support/em_casa_propria.sh
        ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES TIMEOUT ${A_TIMEOUT} ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
    quorel_test_emulated(${name})
endfunction()

# What a test needs to run under the emulator of the cross build, if there is one.
function(quorel_test_emulated name)
    if(CMAKE_CROSSCOMPILING_EMULATOR)
        # The test's own home would hide the cache. All tests stand on one desktop, where any of them is found by its title.
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT QUOREL_CACHE=$ENV{QUOREL_CACHE})
        set_property(TEST ${name} PROPERTY RESOURCE_LOCK mesa)
    endif()
endfunction()

# quorel_test_200(name): runs a test once more on a dense screen, as <name>_200.
function(quorel_test_200 name)
    add_test(NAME ${name}_200 COMMAND ${PROJECT_SOURCE_DIR}/tests/support/em_casa_propria.sh
        ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}>)
    set_tests_properties(${name}_200 PROPERTIES TIMEOUT 120
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_SCALE_FACTOR=2")
    quorel_test_emulated(${name}_200)
endfunction()
