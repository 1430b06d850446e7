#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace cvlog::tests {

/// Makes the inputs that a fuzz program tries when it is driven without a fuzzer that chooses them.
class FuzzInputs {
public:
    virtual ~FuzzInputs() = default;
    virtual std::string next() = 0;
};

/// Each fuzz program has one.
std::unique_ptr<FuzzInputs> makeFuzzInputs(std::uint32_t seed);

} // namespace cvlog::tests
