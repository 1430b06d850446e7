# The portable tests and benchmarks, on this machine.

set(patterns)
foreach(folder base automation ports widgets hostapi core store view details host resources headless support posix)
    list(APPEND patterns tests/${folder}/*.cpp tests/${folder}/*/*.cpp)
endforeach()

if(CVLOG_BENCH)
    cvlog_sources(bench_sources bench/*.cpp bench/native/*.cpp bench/posix/*.cpp)
    cvlog_executable(bench_native SOURCES ${bench_sources} LINKS cvlog_headless)
    return()
endif()

cvlog_sources(test_sources ${patterns})
cvlog_tests(tests_native SOURCES ${test_sources} LINKS cvlog_headless cvlog_gtest)
if(TARGET tests_native)
    gtest_discover_tests(tests_native DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endif()

# Programs that try random input, as much as they are told; with clang its libFuzzer drives them instead.
foreach(fuzzed error_line errors_file)
    set(fuzz_sources tests/fuzz/${fuzzed}.cpp tests/support/${fuzzed}_fuzz.cpp)
    if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
        # Compiled once more with what tells the fuzzer which code was reached.
        cvlog_executable(fuzz_${fuzzed} SOURCES ${fuzz_sources} details/${fuzzed}.cpp LINKS cvlog_headless)
        target_compile_options(fuzz_${fuzzed} PRIVATE -fsanitize=fuzzer)
        target_link_options(fuzz_${fuzzed} PRIVATE -fsanitize=fuzzer)
    else()
        cvlog_executable(fuzz_${fuzzed} SOURCES ${fuzz_sources} tests/fuzz/driver.cpp LINKS cvlog_headless)
    endif()
endforeach()
