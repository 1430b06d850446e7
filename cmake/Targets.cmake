# Targets made from folders. A folder that is empty or missing gives a target that carries only its links.

include_guard()

# The options every compiled target of the project gets; as an interface so that dependencies stay free of them.
add_library(cvlog_options INTERFACE)
target_include_directories(cvlog_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(cvlog_options INTERFACE
    # -Wrestrict: this compiler reports its own library's string concatenation (GCC bug 105651).
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wshadow -Wconversion -Wno-restrict>
    $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${CVLOG_WERROR}>>:-Werror>
    # What several sources in one unit would warn of: their unnamed namespaces are as private as before.
    $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${CMAKE_UNITY_BUILD}>>:-Wno-subobject-linkage>)
if(CVLOG_ASSERTIONS)
    target_compile_definitions(cvlog_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(CVLOG_SANITIZE)
    target_compile_options(cvlog_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(cvlog_options INTERFACE -fsanitize=address,undefined)
endif()
if(WIN32)
    target_compile_definitions(cvlog_options INTERFACE
        UNICODE _UNICODE _WIN32_WINNT=0x0A00 WINVER=0x0A00)
    # Static and stripped: a binary then needs nothing but the system's own libraries.
    target_link_options(cvlog_options INTERFACE -static -s)
endif()

# cvlog_sources(<variable> <pattern>...): sources below the project's root, followed when files come and go.
function(cvlog_sources variable)
    list(TRANSFORM ARGN PREPEND ${CMAKE_SOURCE_DIR}/ OUTPUT_VARIABLE patterns)
    file(GLOB found CONFIGURE_DEPENDS ${patterns})
    set(${variable} ${found} PARENT_SCOPE)
endfunction()

# cvlog_library(<name> FOLDERS <folder>... [LINKS <target>...])
function(cvlog_library name)
    cmake_parse_arguments(ARG "" "" "FOLDERS;LINKS" ${ARGN})
    list(TRANSFORM ARG_FOLDERS APPEND /*.cpp OUTPUT_VARIABLE patterns)
    cvlog_sources(sources ${patterns})
    if(sources)
        add_library(${name} STATIC ${sources})
        target_link_libraries(${name} PUBLIC cvlog_options ${ARG_LINKS})
    else()
        message(STATUS "${name}: no sources yet")
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE cvlog_options ${ARG_LINKS})
    endif()
endfunction()

# cvlog_tests(<name> SOURCES <file>... [LINKS <target>...]): an executable whose own sources are not optimised, as they
# take longer to compile than to run. What they test is optimised as always.
function(cvlog_tests name)
    cvlog_executable(${name} ${ARGN})
    if(TARGET ${name})
        target_compile_options(${name} PRIVATE -O0)
    endif()
endfunction()

# cvlog_executable(<name> SOURCES <file>... [LINKS <target>...]); makes no target without sources.
function(cvlog_executable name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    if(NOT ARG_SOURCES)
        message(STATUS "${name}: no sources yet")
        return()
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE cvlog_options ${ARG_LINKS})
endfunction()
