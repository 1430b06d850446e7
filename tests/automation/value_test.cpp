#include "automation/value.h"

#include "automation/error.h"
#include "tests/support/script_object.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace cvlog::automation {
namespace {

constexpr std::int32_t kDone = 0;

struct Conversion {
    const char* name;
    Value from;
    Type to;
    std::int32_t code; // kDone, or the code of the error
    Value result;
};

void PrintTo(const Conversion& conversion, std::ostream* out) { *out << conversion.name; }

class ValueConversion : public testing::TestWithParam<Conversion> {};

TEST_P(ValueConversion, FollowsTheTable) {
    const Conversion& row = GetParam();
    if (row.code == kDone) {
        EXPECT_TRUE(convert(row.from, row.to) == row.result)
            << "got " << tests::describe(convert(row.from, row.to));
        return;
    }
    try {
        const Value result = convert(row.from, row.to);
        ADD_FAILURE() << "converted to " << tests::describe(result);
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.code(), row.code);
    }
}

const std::int32_t kMax32 = std::numeric_limits<std::int32_t>::max();
const std::int32_t kMin32 = std::numeric_limits<std::int32_t>::min();
const std::int16_t kSeven16 = 7;
const std::int16_t kMax16 = 32767;
const std::int16_t kMin16 = -32768;
const ObjectRef kNothing;

const Conversion kToInt32[] = {
    {"Empty", Value(), Type::Int32, kDone, 0},
    {"True", true, Type::Int32, kDone, -1},
    {"False", false, Type::Int32, kDone, 0},
    {"Int16", kSeven16, Type::Int32, kDone, 7},
    {"Int64", std::int64_t{-7}, Type::Int32, kDone, -7},
    {"Int64TooLarge", std::int64_t{kMax32} + 1, Type::Int32, code::kOverflow, {}},
    {"HalfRoundsToEvenDown", 2.5, Type::Int32, kDone, 2},
    {"HalfRoundsToEvenUp", 3.5, Type::Int32, kDone, 4},
    {"NegativeHalfRoundsToEven", -2.5, Type::Int32, kDone, -2},
    {"NegativeHalfBelowZero", -0.5, Type::Int32, kDone, 0},
    {"Largest", static_cast<double>(kMax32), Type::Int32, kDone, kMax32},
    {"Smallest", static_cast<double>(kMin32), Type::Int32, kDone, kMin32},
    {"TooLarge", 2147483648.0, Type::Int32, code::kOverflow, {}},
    {"TooSmall", -2147483649.0, Type::Int32, code::kOverflow, {}},
    {"RoundsUpOverTheLimit", 2147483647.5, Type::Int32, code::kOverflow, {}},
    {"NotANumber", std::nan(""), Type::Int32, code::kOverflow, {}},
    {"Text", u"42", Type::Int32, kDone, 42},
    {"TextWithBlanksAndSign", u" +42 ", Type::Int32, kDone, 42},
    {"TextWithFraction", u"2.5", Type::Int32, kDone, 2},
    {"TextWithExponent", u"1e3", Type::Int32, kDone, 1000},
    {"TextTrue", u"tRuE", Type::Int32, kDone, -1},
    {"TextTooLarge", u"99999999999", Type::Int32, code::kOverflow, {}},
    {"TextFarTooLarge", u"1e999", Type::Int32, code::kOverflow, {}},
    {"TextEmpty", u"", Type::Int32, code::kTypeMismatch, {}},
    {"TextBlank", u"  ", Type::Int32, code::kTypeMismatch, {}},
    {"TextWord", u"12x", Type::Int32, code::kTypeMismatch, {}},
    {"TextTwoSigns", u"+-5", Type::Int32, code::kTypeMismatch, {}},
    {"TextInfinity", u"inf", Type::Int32, code::kTypeMismatch, {}},
    {"TextNaN", u"nan", Type::Int32, code::kTypeMismatch, {}},
    {"Date", Date{2.5}, Type::Int32, kDone, 2},
    {"Null", Null{}, Type::Int32, code::kTypeMismatch, {}},
    {"Missing", Missing{}, Type::Int32, code::kParameterNotOptional, {}},
    {"Error", ErrorCode{5}, Type::Int32, code::kTypeMismatch, {}},
    {"Nothing", kNothing, Type::Int32, code::kObjectRequired, {}},
};

const Conversion kToOthers[] = {
    {"Int16Largest", 32767, Type::Int16, kDone, kMax16},
    {"Int16Smallest", -32768, Type::Int16, kDone, kMin16},
    {"Int16TooLarge", 32768, Type::Int16, code::kOverflow, {}},
    {"Int16TooSmall", -32769, Type::Int16, code::kOverflow, {}},
    {"Int16Half", 0.5, Type::Int16, kDone, std::int16_t{0}},
    {"ColourOfANumber", 0xFF, Type::Colour, kDone, 0xFF},
    {"ColourOfANegativeNumber", kMin32 + 5, Type::Colour, kDone, kMin32 + 5},
    {"ColourOfAnUnsignedNumber", std::int64_t{0x80000005}, Type::Colour, kDone, kMin32 + 5},
    {"ColourOfADouble", 2147483653.0, Type::Colour, kDone, kMin32 + 5},
    {"ColourOfText", u"2147483653", Type::Colour, kDone, kMin32 + 5},
    {"ColourLargest", 4294967295.0, Type::Colour, kDone, -1},
    {"ColourTooLarge", 4294967296.0, Type::Colour, code::kOverflow, {}},
    {"ColourTooSmall", -2147483649.0, Type::Colour, code::kOverflow, {}},
    {"ColourOfNull", Null{}, Type::Colour, code::kTypeMismatch, {}},
    {"BooleanOfZero", 0, Type::Boolean, kDone, false},
    {"BooleanOfAnyOther", -7, Type::Boolean, kDone, true},
    {"BooleanOfAFraction", 0.25, Type::Boolean, kDone, true},
    {"BooleanOfText", u"False", Type::Boolean, kDone, false},
    {"BooleanOfANumberAsText", u"2", Type::Boolean, kDone, true},
    {"BooleanOfAWord", u"yes", Type::Boolean, code::kTypeMismatch, {}},
    {"BooleanOfNull", Null{}, Type::Boolean, code::kTypeMismatch, {}},
    {"SingleOfDouble", 1.5, Type::Single, kDone, 1.5F},
    {"SingleTooLarge", 1e39, Type::Single, code::kOverflow, {}},
    {"DoubleOfSingle", 1.5F, Type::Double, kDone, 1.5},
    {"TextOfEmpty", Value(), Type::Text, kDone, u""},
    {"TextOfTrue", true, Type::Text, kDone, u"True"},
    {"TextOfFalse", false, Type::Text, kDone, u"False"},
    {"TextOfSmallest", kMin32, Type::Text, kDone, u"-2147483648"},
    {"TextOfDouble", 0.1, Type::Text, kDone, u"0.1"},
    {"TextOfSingle", 0.1F, Type::Text, kDone, u"0.1"},
    {"TextOfWholeDouble", 3.0, Type::Text, kDone, u"3"},
    {"TextOfText", u"a", Type::Text, kDone, u"a"},
    {"TextOfNull", Null{}, Type::Text, code::kTypeMismatch, {}},
    {"TextOfMissing", Missing{}, Type::Text, code::kParameterNotOptional, {}},
    {"TextOfError", ErrorCode{1}, Type::Text, code::kTypeMismatch, {}},
    {"TextOfNothing", kNothing, Type::Text, code::kObjectRequired, {}},
    {"ObjectOfEmpty", Value(), Type::Object, kDone, kNothing},
    {"ObjectOfNull", Null{}, Type::Object, kDone, kNothing},
    {"ObjectOfNumber", 7, Type::Object, code::kTypeMismatch, {}},
    {"ObjectOfText", u"", Type::Object, code::kTypeMismatch, {}},
    {"ObjectOfMissing", Missing{}, Type::Object, code::kParameterNotOptional, {}},
    {"AnyOfNull", Null{}, Type::Any, kDone, Null{}},
    {"AnyOfMissing", Missing{}, Type::Any, kDone, Missing{}},
};

std::string nameOf(const testing::TestParamInfo<Conversion>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(ToInt32, ValueConversion, testing::ValuesIn(kToInt32), nameOf);
INSTANTIATE_TEST_SUITE_P(ToOthers, ValueConversion, testing::ValuesIn(kToOthers), nameOf);

TEST(ValueOfText, KeepsNulsAndLoneSurrogates) {
    const std::u16string text(u"a\0\xD800"
                              u"b",
                              4);
    EXPECT_EQ(toText(Value(text)), text);
}

TEST(ValueOfText, IsWrittenInPlaceWhateverItWasBefore) {
    Value value = 5;
    EXPECT_EQ(value.makeText(), u"");
    value.makeText() = u"a text that is longer than what fits into the object";
    const char16_t* const memory = value.as<std::u16string>().data();
    value.makeText() = u"short";
    EXPECT_EQ(value, Value(u"short"));
    EXPECT_EQ(value.as<std::u16string>().data(), memory) << "its memory was used again";
}

TEST(ValueOfObject, StandsForItsDefaultMemberWhereAPlainValueIsWanted) {
    tests::CallCounter calls;
    const auto object = std::make_shared<tests::ScriptObject>("Object", calls);
    object->set(u"", u"42");
    EXPECT_EQ(toInt32(Value(object)), 42);
    EXPECT_EQ(toText(Value(object)), u"42");
    EXPECT_EQ(toObject(Value(object)), object);
}

TEST(ValueOfObject, FailsWhenTheDefaultMemberIsAnObjectOrMissing) {
    tests::CallCounter calls;
    const auto inner = std::make_shared<tests::ScriptObject>("Inner", calls);
    const auto outer = std::make_shared<tests::ScriptObject>("Outer", calls);
    EXPECT_THROW(toInt32(Value(outer)), AutomationError);
    outer->set(u"", inner);
    EXPECT_THROW(toInt32(Value(outer)), AutomationError);
}

TEST(ValueIsNothing, HoldsForEmptyNullAndNoObject) {
    EXPECT_TRUE(Value().isNothing());
    EXPECT_TRUE(Value(Null{}).isNothing());
    EXPECT_TRUE(Value(ObjectRef()).isNothing());
    EXPECT_FALSE(Value(u"").isNothing());
    EXPECT_FALSE(Value(0).isNothing());
    EXPECT_FALSE(Value(Missing{}).isNothing());
}

} // namespace
} // namespace cvlog::automation
