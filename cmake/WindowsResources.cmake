# Resources made at build time: type library, icons, pictures.

include_guard()

# cvlog_type_library(<target> <file.idl> <file.tlb>)
function(cvlog_type_library target idl tlb)
    find_program(CVLOG_WIDL ${CVLOG_MINGW_TRIPLET}-widl REQUIRED)
    set(architecture_flag --win32)
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        set(architecture_flag --win64)
    endif()
    # The standard type library is found beside Wine's own libraries, whichever architecture is installed.
    file(GLOB standard_libraries /usr/lib/*/wine/*-windows)
    list(TRANSFORM standard_libraries PREPEND -L)
    add_custom_command(
        OUTPUT ${tlb}
        COMMAND ${CVLOG_WIDL} ${architecture_flag} -I/usr/include/wine/wine/windows ${standard_libraries}
                -t -o ${tlb} ${idl}
        DEPENDS ${idl}
        COMMENT "Type library CVLog3.tlb"
        VERBATIM)
    add_custom_target(${target} DEPENDS ${tlb})
    set_target_properties(${target} PROPERTIES CVLOG_FILES "${tlb}")
endfunction()

# cvlog_icons(<target> <folder> SIZES <pixels>... DRAWINGS <file.svg>...): each drawing as <folder>/<name>.ico.
function(cvlog_icons target folder)
    cmake_parse_arguments(ARG "" "" "SIZES;DRAWINGS" ${ARGN})
    set(icons)
    foreach(svg IN LISTS ARG_DRAWINGS)
        find_program(CVLOG_RSVG rsvg-convert REQUIRED)
        find_program(CVLOG_ICOTOOL icotool REQUIRED)
        cmake_path(GET svg STEM name)
        set(commands)
        set(images)
        foreach(size IN LISTS ARG_SIZES)
            set(image ${folder}/${name}-${size}.png)
            list(APPEND images ${image})
            list(APPEND commands COMMAND ${CVLOG_RSVG} -w ${size} -h ${size} -o ${image} ${svg})
        endforeach()
        add_custom_command(
            OUTPUT ${folder}/${name}.ico
            COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
            ${commands}
            COMMAND ${CVLOG_ICOTOOL} -c -o ${folder}/${name}.ico ${images}
            DEPENDS ${svg}
            COMMENT "Icon ${name}.ico"
            VERBATIM)
        list(APPEND icons ${folder}/${name}.ico)
    endforeach()
    add_custom_target(${target} DEPENDS ${icons})
    set_target_properties(${target} PROPERTIES CVLOG_FILES "${icons}")
endfunction()

# cvlog_pictures(<target> <folder> <file.svg>...): each drawing as <folder>/<name>.png, 32 pixels square.
function(cvlog_pictures target folder)
    set(pictures)
    foreach(svg IN LISTS ARGN)
        find_program(CVLOG_RSVG rsvg-convert REQUIRED)
        cmake_path(GET svg STEM name)
        add_custom_command(
            OUTPUT ${folder}/${name}.png
            COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
            COMMAND ${CVLOG_RSVG} -w 32 -h 32 -o ${folder}/${name}.png ${svg}
            DEPENDS ${svg}
            COMMENT "Picture ${name}.png"
            VERBATIM)
        list(APPEND pictures ${folder}/${name}.png)
    endforeach()
    add_custom_target(${target} DEPENDS ${pictures})
    set_target_properties(${target} PROPERTIES CVLOG_FILES "${pictures}")
endfunction()

# cvlog_resources(<target> <folder> <maker>...): the target's .rc files may name what the makers make, by its path below
# the build folder, and manifests beside them; windres reports no dependencies, so they are listed here.
function(cvlog_resources target folder)
    cvlog_sources(scripts ${folder}/*.rc)
    cvlog_sources(inputs ${folder}/*.manifest ${folder}/*.h)
    foreach(maker IN LISTS ARGN)
        add_dependencies(${target} ${maker})
        get_target_property(files ${maker} CVLOG_FILES)
        list(APPEND inputs ${files})
    endforeach()
    target_include_directories(${target} PRIVATE ${CMAKE_BINARY_DIR})
    if(scripts)
        set_source_files_properties(${scripts} PROPERTIES OBJECT_DEPENDS "${inputs}")
    endif()
endfunction()
