# Warnings are errors in everything that is ours; Qt's own headers count as the system's.
add_library(quorel_warnings INTERFACE)
target_compile_options(quorel_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

option(QUOREL_SANITIZE "AddressSanitizer and UndefinedBehaviorSanitizer in everything" OFF)
if(QUOREL_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

if(WIN32)
    # A chain of sends within sends, each with its handler, takes some KB a level in 500 levels.
    add_link_options(-Wl,--stack,16777216)
endif()

# quorel_library(folder USES lower-folders QT modules PUBLIC_HEADERS files… SOURCES files…)
# One static library a folder. Those that link it find its PUBLIC_HEADERS as "<folder>/…", and nobody else does, so an
# upward #include does not compile, nor one of a header that is the folder's own affair. The folder itself, and tests
# that say so (quorel_inner), see all of its headers.
function(quorel_library folder)
    cmake_parse_arguments(A "" "" "USES;QT;PUBLIC_HEADERS;SOURCES" ${ARGN})
    add_library(quorel_${folder} STATIC ${A_SOURCES})
    set(all ${PROJECT_BINARY_DIR}/include/${folder})
    file(MAKE_DIRECTORY ${all})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${all}/${folder} SYMBOLIC)
    set(public ${PROJECT_BINARY_DIR}/public/${folder})
    file(REMOVE_RECURSE ${public}) # a header may have ceased to be public
    file(MAKE_DIRECTORY ${public}/${folder})
    foreach(header IN LISTS A_PUBLIC_HEADERS)
        if(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${header})
            message(FATAL_ERROR "src/${folder}: there is no ${header}")
        endif()
        file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${public}/${folder}/${header} SYMBOLIC)
    endforeach()
    list(TRANSFORM A_USES PREPEND quorel_)
    list(TRANSFORM A_QT PREPEND Qt6::)
    target_include_directories(quorel_${folder} PRIVATE ${all} INTERFACE ${public})
    target_compile_definitions(quorel_${folder} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
    target_link_libraries(quorel_${folder} PUBLIC ${A_USES} ${A_QT} PRIVATE quorel_warnings)
    quorel_use_pch(quorel_${folder} src)
endfunction()

# quorel_inner(target folders…): lets a test, a benchmark or a fuzzer see all headers of these folders.
function(quorel_inner target)
    foreach(folder IN LISTS ARGN)
        target_include_directories(${target} BEFORE PRIVATE ${PROJECT_BINARY_DIR}/include/${folder})
    endforeach()
endfunction()

# quorel_program(name [JANELAS] USES folders QT modules SOURCES files…): an executable in bin/.
# It sees all headers of its own folder. JANELAS: a program of windows, which brings no console with it where the system tells the two apart.
function(quorel_program name)
    cmake_parse_arguments(A "JANELAS" "" "USES;QT;SOURCES" ${ARGN})
    add_executable(${name} ${A_SOURCES})
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ${A_JANELAS})
    list(TRANSFORM A_USES PREPEND quorel_)
    list(TRANSFORM A_QT PREPEND Qt6::)
    target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
    target_link_libraries(${name} PRIVATE ${A_USES} ${A_QT} quorel_warnings)
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    quorel_inner(${name} ${folder})
    quorel_use_pch(${name} src)
endfunction()
