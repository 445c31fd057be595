# SPDX-License-Identifier: GPL-3.0-or-later
# The one way a target of this project is made: a folder is a target, its own folder is its include directory, and what
# it may include is what it links, so that an upward include does not compile.

# Functions and lines are what a trace shows; all the rest of -g makes a build a third longer.
add_compile_options($<$<CONFIG:RelWithDebInfo>:-g1>)
if(QUINCE_SANITIZE)
    # -O2 takes twice as long to compile and a check little less to run.
    add_compile_options(-O1 -fsanitize=${QUINCE_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUINCE_SANITIZE})
    if(QUINCE_SANITIZE MATCHES "undefined")
        # Qt 6.4's plugin loader hands function pointers over a C boundary; vptr needs RTTI of Qt's hidden classes.
        add_compile_options(-fno-sanitize=vptr)
    endif()
endif()
if(QUINCE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=vptr,function -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

add_library(quince_options INTERFACE)
target_compile_options(quince_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wno-missing-field-initializers)
target_compile_definitions(quince_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    $<$<CONFIG:Debug>:QUINCE_DEBUG>)

# quince_library(name SOURCES files... [LINKS public targets...] [PRIVATE_LINKS targets...] [INCLUDES folders...]
#                [WIDGETS])
# WIDGETS turns on moc and the shared precompiled header of the window code.
function(quince_library name)
    cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;LINKS;PRIVATE_LINKS;INCLUDES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    foreach(folder IN LISTS ARG_INCLUDES)
        target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
    endforeach()
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE quince_options ${ARG_PRIVATE_LINKS})
    if(ARG_WIDGETS)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/PrecompiledWidgets.h)
    endif()
endfunction()

# quince_tool(name LOGIC files... WINDOW files... [FOLDER folder])
# A tool as two targets: quince_<name>_logic (pixels, parameters, steps; no widgets) and quince_<name> (canvas and
# panel). FOLDER is where its files lie when several tools share one list.
function(quince_tool name)
    cmake_parse_arguments(ARG "" "FOLDER" "LOGIC;WINDOW" ${ARGN})
    quince_library(quince_${name}_logic SOURCES ${ARG_LOGIC} INCLUDES ${ARG_FOLDER} LINKS quince_canvas_logic)
    quince_library(quince_${name} WIDGETS SOURCES ${ARG_WINDOW} INCLUDES ${ARG_FOLDER}
        LINKS quince_${name}_logic quince_canvas)
endfunction()

# quince_kernels(base.cpp avx2.cpp avx512.cpp)
# The same kernels once for each instruction set; libs/base/InstructionSets.h chooses for the machine. Each is optimised
# in every configuration but Debug, since a row of arithmetic is all they are.
function(quince_kernels base avx2 avx512)
    set(options $<$<NOT:$<CONFIG:Debug>>:-O3> -fno-math-errno -fno-trapping-math)
    set_source_files_properties(${base} PROPERTIES COMPILE_OPTIONS "${options}")
    set_source_files_properties(${avx2} PROPERTIES COMPILE_OPTIONS "${options};-mavx2;-mfma")
    # GCC 12's own AVX-512 header trips these two warnings in every intrinsic that leaves its unused lanes undefined.
    set_source_files_properties(${avx512} PROPERTIES
        COMPILE_OPTIONS "${options};-mavx512f;-mavx512bw;-mavx512dq;-mavx512vl;-mfma;-mprefer-vector-width=512;-Wno-uninitialized;-Wno-maybe-uninitialized")
endfunction()

# What a check has to build: the tests labelled tsan and what they need beside them, and the tests without windows.
add_custom_target(quince_tsan_tests)
add_custom_target(quince_unit_tests)

# quince_test(name SOURCES files... LINKS targets... [GUI] [ONLINE] [LABELS labels...] [TIMEOUT seconds])
# One test program. GUI ones get a real window system (the test command starts a virtual one when there is none) and end
# when anything in them opens an internet socket, unless they are ONLINE, for windows that talk to the test's server. The
# label tsan is for those that run work on more than one thread, the label quality for those that measure whole portraits.
function(quince_test name)
    cmake_parse_arguments(ARG "GUI;ONLINE" "TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    if(ARG_GUI)
        if(ARG_ONLINE)
            target_link_libraries(${name} PRIVATE quince_test_online_main)
        else()
            target_link_libraries(${name} PRIVATE quince_test_gui_main)
        endif()
        # Windows are made of skins, texts and icons.
        add_dependencies(${name} quince_resources)
        set(kind gui)
        # One at a time: windows of two programs would take the keyboard from each other.
        set(alone RESOURCE_LOCK display)
    else()
        target_link_libraries(${name} PRIVATE quince_test_main)
        if(NOT "quality" IN_LIST ARG_LABELS)
            add_dependencies(quince_unit_tests ${name})
        endif()
        set(kind unit)
    endif()
    target_link_libraries(${name} PRIVATE quince_options ${ARG_LINKS} GTest::gtest GTest::gmock)
    target_precompile_headers(${name} REUSE_FROM quince_test_main)
    if("tsan" IN_LIST ARG_LABELS)
        add_dependencies(quince_tsan_tests ${name})
    endif()
    add_test(NAME ${name} COMMAND ${name})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 600)
    endif()
    set_tests_properties(${name} PROPERTIES LABELS "${kind};${ARG_LABELS}" TIMEOUT ${ARG_TIMEOUT} ${alone})
endfunction()
