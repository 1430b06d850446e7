#pragma once

#include "tests/fuzz/inputs.h"

#include <random>
#include <string>
#include <string_view>

namespace cvlog::tests {

/// What is wrong with the lines that are read of a file, "" for nothing. The first four bytes of the input choose into
/// which blocks the reading falls and whether the file grows or shrinks after it was opened; the others are the file.
std::string faultOfErrorsFile(std::string_view input);

/// Such inputs without end, the same for the same seed.
class RandomErrorsFiles : public FuzzInputs {
public:
    explicit RandomErrorsFiles(std::uint32_t seed) : random_(seed) {}
    std::string next() override;

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    std::mt19937 random_;
};

} // namespace cvlog::tests
