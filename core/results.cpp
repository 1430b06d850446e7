#include "core/results.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::core {

namespace {

int outcomeStringId(std::int32_t code) noexcept {
    switch (code) {
    case -4:
        return 502;
    case -3:
    case 16:
        return 503;
    case -2:
        return 504;
    case -1:
        return 505;
    case 0:
        return 506;
    case 1:
        return 507;
    case 2:
        return 508;
    default:
        return 509;
    }
}

} // namespace

std::u16string_view ResultIconKey(std::int32_t code) noexcept {
    switch (code) {
    case -4:
    case -3:
    case 16:
        return u"Cancel";
    case -1:
        return u"Failure";
    case 0:
        return u"Good";
    case 1:
        return u"Suspect";
    default:
        return u"Bad";
    }
}

std::u16string OutcomeMessage(resources::Language language, std::int32_t code) {
    return base::replaceFirst(resources::text(language, outcomeStringId(code)), u"%1", base::decimal(code));
}

ports::BoxIcon OutcomeBoxIcon(std::int32_t code) noexcept {
    if (code == 0) return ports::BoxIcon::Information;
    return code == 1 ? ports::BoxIcon::Exclamation : ports::BoxIcon::Critical;
}

std::u16string CleanMessage(std::u16string_view text) {
    std::u16string line(text);
    return std::u16string(CleanMessageInPlace(line));
}

std::u16string_view CleanMessageInPlace(std::u16string& text) noexcept {
    for (char16_t& unit : text) unit = unit < u' ' ? u' ' : unit;
    return base::trimBlanks(text);
}

std::string_view CleanMessageInPlace(std::string& ascii) noexcept {
    for (char& byte : ascii)
        byte = static_cast<char>(std::max<unsigned char>(static_cast<unsigned char>(byte), ' '));
    const std::size_t begin = std::min(ascii.find_first_not_of(' '), ascii.size());
    return std::string_view(ascii).substr(begin, ascii.find_last_not_of(' ') + 1 - begin);
}

} // namespace cvlog::core
