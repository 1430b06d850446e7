# The component's Windows body: the library, the sample host, and what tests and measures them.

include(WindowsResources)
enable_language(RC)

set(system_libraries
    comctl32 comdlg32 gdi32 imm32 msimg32 ole32 oleacc oleaut32 shell32 shlwapi user32 uuid uxtheme version winmm)

cvlog_library(cvlog_win32 FOLDERS platform/win32 LINKS cvlog_rooms ${system_libraries})

if(CVLOG_BENCH)
    cvlog_sources(bench_sources bench/*.cpp bench/windows/*.cpp)
    cvlog_executable(bench_windows SOURCES ${bench_sources} LINKS cvlog_headless cvlog_win32 psapi)
    return()
endif()

cvlog_sources(component_icons resources/icons/*.svg)
cvlog_icons(icons ${CMAKE_BINARY_DIR}/icons SIZES 16 20 24 32 DRAWINGS ${component_icons})
cvlog_sources(form_icons resources/icons/forms/*.svg)
cvlog_icons(form_icons ${CMAKE_BINARY_DIR}/icons SIZES 32 40 48 64 DRAWINGS ${form_icons})
cvlog_type_library(typelib ${CMAKE_SOURCE_DIR}/com/CVLog3.idl ${CMAKE_BINARY_DIR}/CVLog3.tlb)

cvlog_sources(dll_sources com/*.cpp)
cvlog_sources(dll_resources com/*.rc com/*.def)
if(dll_sources)
    add_library(CVLog3 SHARED ${dll_sources} ${dll_resources})
    set_target_properties(CVLog3 PROPERTIES PREFIX "" OUTPUT_NAME CVLog3)
    target_link_libraries(CVLog3 PRIVATE cvlog_options cvlog_win32 cvlog_rooms)
    # 32 bit: the exports of the .def carry no @n, the functions do.
    target_link_options(CVLog3 PRIVATE -Wl,--enable-stdcall-fixup)
    cvlog_resources(CVLog3 com icons form_icons typelib)
    # For hosts that activate the classes without registration; it lies beside the library.
    configure_file(com/CVLog3.manifest ${CMAKE_BINARY_DIR}/bin/CVLog3.manifest COPYONLY)
else()
    message(STATUS "CVLog3: no sources yet")
endif()

# A client of the component through COM alone, so none of its libraries.
cvlog_sources(workbench_sources workbench/*.cpp)
cvlog_sources(workbench_resources workbench/*.rc)
cvlog_executable(workbench SOURCES ${workbench_sources} LINKS sqlite ${system_libraries})
if(TARGET workbench)
    target_sources(workbench PRIVATE ${workbench_resources})
    target_link_options(workbench PRIVATE -municode -mwindows)
    cvlog_sources(entity_icons workbench/icons/*.svg)
    cvlog_pictures(entity_pictures ${CMAKE_BINARY_DIR}/bin/Repository/Icons ${entity_icons})
    cvlog_icons(program_icon ${CMAKE_BINARY_DIR}/icons SIZES 16 20 24 32 48
                DRAWINGS ${CMAKE_SOURCE_DIR}/workbench/icons/program/Workbench.svg)
    cvlog_resources(workbench workbench program_icon typelib entity_pictures)
    if(TARGET CVLog3)
        add_dependencies(workbench CVLog3)
    endif()

    # The sample report generator: a library of its own, as a host's would be, of the sample host's own parts.
    set(report_parts com_call connection_point output_file script_object text variant)
    cvlog_sources(report_sources workbench/report/*.cpp)
    list(TRANSFORM report_parts REPLACE "(.+)" "${CMAKE_SOURCE_DIR}/workbench/\\1.cpp")
    add_library(TLReport SHARED ${report_sources} ${report_parts} workbench/report/TLReport.def)
    set_target_properties(TLReport PROPERTIES PREFIX "" OUTPUT_NAME TLReport)
    target_link_libraries(TLReport PRIVATE cvlog_options ${system_libraries})
    target_link_options(TLReport PRIVATE -Wl,--enable-stdcall-fixup)
    add_dependencies(workbench TLReport)
endif()

# Portable tests whose contracts the Windows body has to keep as well; add a folder here to run it on both.
set(shared_test_folders support)
list(TRANSFORM shared_test_folders REPLACE "(.+)" "tests/\\1/*.cpp" OUTPUT_VARIABLE shared_patterns)
cvlog_sources(test_sources tests/windows/*.cpp docs/samples/*.cpp)
cvlog_sources(shared_sources ${shared_patterns})
if(test_sources)
    list(APPEND test_sources ${shared_sources})
endif()
cvlog_tests(tests_windows SOURCES ${test_sources} LINKS cvlog_headless cvlog_win32 cvlog_gtest)
if(TARGET tests_windows)
    cvlog_sources(test_resources tests/windows/*.rc)
    target_sources(tests_windows PRIVATE ${test_resources})
    cvlog_resources(tests_windows tests/windows icons form_icons typelib)
    add_executable(desktop_keeper tests/windows/desktop/desktop_keeper.cpp)
    target_link_options(desktop_keeper PRIVATE -mwindows)
    foreach(other CVLog3 workbench desktop_keeper)
        if(TARGET ${other})
            add_dependencies(tests_windows ${other})
        endif()
    endforeach()

    # A process has one user-interface language, taken from the locale it starts with. Suites named Japanese... and
    # Korean... run under those; all others under English.
    function(discover filter prefix locale)
        gtest_discover_tests(tests_windows
            TEST_FILTER ${filter} TEST_PREFIX "${prefix}"
            DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
            PROPERTIES TIMEOUT 120 ENVIRONMENT LC_ALL=${locale})
    endfunction()
    discover("-Japanese*:Korean*" "" C.UTF-8)
    discover("Japanese*" "ja/" ja_JP.UTF-8)
    discover("Korean*" "ko/" ko_KR.UTF-8)
endif()
