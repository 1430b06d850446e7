#include "tests/fuzz/program.h"
#include "tests/support/error_line_fuzz.h"

namespace cvlog::tests {

std::unique_ptr<FuzzInputs> makeFuzzInputs(std::uint32_t seed) {
    return std::make_unique<RandomErrorLines>(seed);
}

} // namespace cvlog::tests

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view line(reinterpret_cast<const char*>(bytes), size);
    cvlog::tests::endOnFault(cvlog::tests::faultOfErrorLine(line));
    return 0;
}
