#include "hostapi/font_object.h"

namespace cvlog::hostapi {

namespace {

using automation::AutomationError;

constexpr float kLargestPoints = 2000; // more than any system draws
constexpr int kLargestWeight = 1000;
constexpr int kLargestCharset = 255;

void require(bool valid) {
    if (!valid) throw AutomationError(automation::code::kInvalidPropertyValue, u"Invalid property value");
}

base::Font readMembers(automation::Object& object) {
    base::Font font;
    font.face = automation::toText(object.get(u"Name"));
    font.points = automation::toSingle(object.get(u"Size"));
    const bool bold = automation::toBoolean(object.get(u"Bold"));
    font.italic = automation::toBoolean(object.get(u"Italic"));
    font.underline = automation::toBoolean(object.get(u"Underline"));
    font.strikethrough = automation::toBoolean(object.get(u"Strikethrough"));
    font.weight = automation::toInt32(object.get(u"Weight"));
    font.charset = automation::toInt32(object.get(u"Charset"));
    require(font.points > 0 && font.points <= kLargestPoints); // false for what is no number
    require(font.weight >= 0 && font.weight <= kLargestWeight);
    require(font.charset >= 0 && font.charset <= kLargestCharset);
    // An object that does not couple the two says what it means with the simpler one.
    if (bold && font.weight < base::kBoldFrom) font.weight = base::kBoldWeight;
    return font;
}

} // namespace

base::Font FontObject::read() const {
    const automation::ObjectRef keep = required();
    try {
        return readMembers(*keep);
    } catch (const AutomationError& error) {
        const bool lacksMember = error.code() == automation::code::kUnknownName ||
                                 error.code() == automation::code::kMemberNotFound;
        if (!lacksMember) throw;
        throw AutomationError(automation::code::kTypeMismatch, u"The object is no font", error.source());
    }
}

} // namespace cvlog::hostapi
