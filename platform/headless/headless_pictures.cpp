#include "platform/headless/headless_pictures.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace cvlog::platform::headless {

namespace {

constexpr std::array<std::u16string_view, 15> kBuiltIn = {
    u"Good",     u"Suspect", u"Failure", u"Cancel", u"Bad",   u"Session", u"SortEmpty", u"SortUp",
    u"SortDown", u"Alert",   u"Turn1",   u"Turn2",  u"Turn3", u"Turn4",   u"Turn5"};
constexpr std::uint32_t kOpaque = 0xFF000000;

class PlainPicture : public ports::Picture {
public:
    explicit PlainPicture(std::u16string_view name) {
        for (const char16_t unit : name) colour_ = (colour_ * 31 + base::foldCase(unit)) | kOpaque;
    }
    ports::Pixels render(int side) const override {
        return {side, std::vector<std::uint32_t>(
                          static_cast<std::size_t>(side) * static_cast<std::size_t>(side), colour_)};
    }

private:
    std::uint32_t colour_ = kOpaque;
};

} // namespace

std::shared_ptr<const ports::Picture> HeadlessPictures::load(std::u16string_view path) {
    gate_.pass("Pictures.load");
    if (!files_.fileExists(path)) throw std::runtime_error("no picture: " + base::toUtf8(path));
    return std::make_shared<PlainPicture>(path);
}

std::shared_ptr<const ports::Picture> HeadlessPictures::builtIn(std::u16string_view key) {
    gate_.pass("Pictures.builtIn");
    if (std::find(kBuiltIn.begin(), kBuiltIn.end(), key) == kBuiltIn.end())
        throw std::runtime_error("no built-in icon: " + base::toUtf8(key));
    return std::make_shared<PlainPicture>(key);
}

} // namespace cvlog::platform::headless
