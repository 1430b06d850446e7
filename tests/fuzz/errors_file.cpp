#include "tests/fuzz/program.h"
#include "tests/support/errors_file_fuzz.h"

namespace cvlog::tests {

std::unique_ptr<FuzzInputs> makeFuzzInputs(std::uint32_t seed) {
    return std::make_unique<RandomErrorsFiles>(seed);
}

} // namespace cvlog::tests

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    cvlog::tests::endOnFault(cvlog::tests::faultOfErrorsFile(input));
    return 0;
}
