#pragma once

#include "details/error_line.h"
#include "tests/fuzz/inputs.h"

#include <functional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::tests {

using ErrorLineParser = std::function<details::ErrorLine(std::span<char>)>;

/// What is wrong with the parts that a parser makes of a line, "" for nothing: they are those of the format read
/// character by character, lie in the line's memory, are together no longer than the line, and the message is clean
/// and a message of its own.
std::string faultOfErrorLine(std::string_view line, const ErrorLineParser& parse = details::ParseErrorLine);

/// Lines without end, the same for the same seed: such as tools write, with slips, of any bytes, earlier ones with
/// changes, and now and then one of up to a megabyte.
class RandomErrorLines : public FuzzInputs {
public:
    explicit RandomErrorLines(std::uint32_t seed);
    std::string next() override;

private:
    std::string anyBytes(std::size_t size);
    std::string usualLine();
    std::string longLine();
    std::string changed(std::string line);
    std::size_t below(std::size_t limit) { return random_() % limit; }

    std::mt19937 random_;
    std::vector<std::string> earlier_;
};

} // namespace cvlog::tests
