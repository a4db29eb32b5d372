# SPDX-License-Identifier: MIT
# One way to declare a target, so that warnings, Qt's strictness and sanitizers are the same everywhere.

function(velt_strict target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        -Wold-style-cast -Wconversion $<$<BOOL:${VELT_WERROR}>:-Werror>
        $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-sign-conversion>) # As GCC's -Wconversion.
    target_compile_definitions(${target} PRIVATE
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DEPRECATED_WARNINGS)
    if(VELT_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${VELT_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${VELT_SANITIZE})
    endif()
endfunction()

# Every text of the program says how it is encoded; in tests plain literals read better.
function(velt_explicit_strings target)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_URL_CAST_FROM_STRING)
endfunction()

# velt_library(<name> [OBJECT] SOURCES ... [PUBLIC ...] [PRIVATE ...])
# A library of one folder. Its headers are seen only by targets that link it, so that an include
# against the direction of the layers does not compile. OBJECT libraries are for code that nothing
# refers to by name (resources) or that resolves another library's references (platform layers).
function(velt_library name)
    cmake_parse_arguments(arg "OBJECT" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    if(arg_OBJECT)
        add_library(${name} OBJECT ${arg_SOURCES})
    else()
        add_library(${name} STATIC ${arg_SOURCES})
    endif()
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
    velt_strict(${name})
    velt_explicit_strings(${name})
endfunction()

# velt_test(<name> SOURCES ... LIBS ... [LABELS ...] [TIMEOUT seconds])
# A Qt Test program run by ctest under <name>; its main comes from tests/support.
function(velt_test name)
    cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBS;LABELS" ${ARGN})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 300) # An emulated machine takes its time.
    endif()
    if(VELT_SANITIZE) # Several times as slow.
        math(EXPR arg_TIMEOUT "${arg_TIMEOUT} * 5")
    endif()
    math(EXPR functionTimeoutMs "${arg_TIMEOUT} * 750")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE velt_test_support ${arg_LIBS})
    velt_strict(${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}"
        SKIP_REGULAR_EXPRESSION "Totals: 0 passed;SKIP   : [A-Za-z]+::initTestCase"
        ENVIRONMENT "QTEST_FUNCTION_TIMEOUT=${functionTimeoutMs};QTEST_DISABLE_STACK_DUMP=1")
    # What the sanitizers find in libraries that are not ours.
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
        "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
        "ASAN_OPTIONS=fast_unwind_on_malloc=0"
        "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp")
endfunction()
