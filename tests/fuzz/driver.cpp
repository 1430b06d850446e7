// fuzz_... [COUNT [SEED]]: tries so many inputs of its own making, a million unless told; the same ones for the same
// seed. One that ends the program is left in the file "fuzz-input"; for what a sanitizer finds that takes its option
// abort_on_error=1.

#include "tests/fuzz/program.h"

#include <algorithm>
#include <csignal>
#include <fstream>

namespace {

std::string triedLast; // the handler of a signal knows nothing else

void keepInput(int) {
    std::ofstream("fuzz-input", std::ios::binary) << triedLast;
    std::fprintf(stderr, "The input is in fuzz-input\n");
}

void tryOne(cvlog::tests::FuzzInputs& inputs) {
    triedLast = inputs.next();
    // In memory that ends where the input does, so that reading behind it is found.
    const auto bytes = std::make_unique<std::uint8_t[]>(triedLast.size());
    std::copy(triedLast.begin(), triedLast.end(), bytes.get());
    LLVMFuzzerTestOneInput(bytes.get(), triedLast.size());
}

} // namespace

int main(int argc, char** argv) {
    const unsigned long count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1'000'000;
    const auto seed = static_cast<std::uint32_t>(argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 1);
    std::signal(SIGABRT, keepInput);
    const auto inputs = cvlog::tests::makeFuzzInputs(seed);
    for (unsigned long tried = 0; tried < count; ++tried) tryOne(*inputs);
    std::printf("%lu inputs of seed %lu, nothing found\n", count, static_cast<unsigned long>(seed));
    return 0;
}
