#include "automation/dispatch_table.h"

#include "automation/error.h"

#include <gtest/gtest.h>

#include <map>

namespace cvlog::automation {
namespace {

/// A member of every kind.
class Sample : public DispatchObject {
public:
    const DispatchTable& dispatchTable() const override {
        static const DispatchTable table = {
            {u"Join",
             10,
             MemberKind::Method,
             Type::Text,
             {{u"Left", Type::Text},
              {u"Count", Type::Int32},
              {.name = u"Right", .type = Type::Text, .optional = true}},
             on<Sample>([](Sample&, std::span<Value> a) {
                 return a[0].as<std::u16string>() + toText(a[1]) + a[2].as<std::u16string>();
             })},
            {u"Twice",
             11,
             MemberKind::Method,
             Type::Nothing,
             {{.name = u"Number", .type = Type::Int16, .byReference = true}, {u"Plain", Type::Int16}},
             on<Sample>([](Sample&, std::span<Value> a) {
                 a[0] = static_cast<std::int16_t>(2 * a[0].as<std::int16_t>());
                 a[1] = std::int16_t{99};
             })},
            {u"Fail",
             12,
             MemberKind::Method,
             Type::Nothing,
             {{.name = u"Out", .type = Type::Text, .byReference = true}},
             on<Sample>([](Sample&, std::span<Value> a) {
                 a[0] = u"written";
                 throw AutomationError(code::kFailure, u"description", u"source");
             })},
            {u"Confuse",
             13,
             MemberKind::Method,
             Type::Nothing,
             {{u"Plain", Type::Int32}},
             on<Sample>([](Sample& s, std::span<Value>) { s.put(u"Size", u"word"); })},
            {u"Size",
             0,
             MemberKind::PropertyGet,
             Type::Int32,
             {},
             on<Sample>([](Sample& s, std::span<Value>) { return s.size; })},
            {u"Size",
             0,
             MemberKind::PropertyPut,
             Type::Nothing,
             {{u"Size", Type::Int32}},
             on<Sample>([](Sample& s, std::span<Value> a) { s.size = a[0].as<std::int32_t>(); })},
            {u"Fixed",
             14,
             MemberKind::PropertyGet,
             Type::Int32,
             {},
             on<Sample>([](Sample&, std::span<Value>) { return 5; })},
            {u"Cell",
             15,
             MemberKind::PropertyGet,
             Type::Text,
             {{u"Row", Type::Int32}, {.name = u"Column", .type = Type::Int32, .optional = true}},
             on<Sample>([](Sample& s, std::span<Value> a) { return s.cells[placeOf(a)]; })},
            {u"Cell",
             15,
             MemberKind::PropertyPut,
             Type::Nothing,
             {{u"Row", Type::Int32},
              {.name = u"Column", .type = Type::Int32, .optional = true},
              {u"Cell", Type::Text}},
             on<Sample>(
                 [](Sample& s, std::span<Value> a) { s.cells[placeOf(a)] = a[2].as<std::u16string>(); })},
            {u"Child",
             16,
             MemberKind::PropertyGet,
             Type::Object,
             {},
             on<Sample>([](Sample& s, std::span<Value>) { return s.child; })},
        };
        return table;
    }
    static std::pair<int, int> placeOf(std::span<Value> values) {
        return {values[0].as<std::int32_t>(), values[1].as<std::int32_t>()};
    }
    std::int32_t size = 3;
    std::map<std::pair<int, int>, std::u16string> cells;
    ObjectRef child;
};

/// A collection: its default member takes an argument.
class Shelf : public DispatchObject {
public:
    const DispatchTable& dispatchTable() const override {
        static const DispatchTable table = {
            {u"Item",
             0,
             MemberKind::PropertyGet,
             Type::Text,
             {{u"Index", Type::Text}},
             on<Shelf>([](Shelf&, std::span<Value> a) { return u"item " + toText(a[0]); })},
        };
        return table;
    }
};

template <class Action>
std::int32_t codeOf(Action&& action) {
    try {
        action();
    } catch (const AutomationError& error) {
        return error.code();
    }
    return 0;
}

class DispatchTableTest : public testing::Test {
protected:
    Value invoke(std::u16string_view name, CallArguments arguments) {
        const auto id = sample->dispatchTable().idOf(name);
        return invokeMember(*sample, *sample->dispatchTable().find(id.value(), MemberKind::Method),
                            arguments);
    }
    std::shared_ptr<Sample> sample = std::make_shared<Sample>();
};

TEST_F(DispatchTableTest, FindsNamesWithoutRegardToCase) {
    EXPECT_EQ(sample->dispatchTable().idOf(u"jOIN"), 10);
    EXPECT_EQ(sample->dispatchTable().idOf(u"Joi"), std::nullopt);
    EXPECT_EQ(toText(sample->invoke(u"JOIN", u"a", 1, u"b")), u"a1b");
}

TEST_F(DispatchTableTest, NumbersParametersFromZero) {
    EXPECT_EQ(sample->dispatchTable().parameterIdOf(u"join", u"COUNT"), 1);
    EXPECT_EQ(sample->dispatchTable().parameterIdOf(u"join", u"None"), std::nullopt);
    EXPECT_EQ(sample->dispatchTable().parameterIdOf(u"none", u"Count"), std::nullopt);
}

TEST_F(DispatchTableTest, PutsNamedArgumentsInTheirPlaces) {
    Value left = u"L", count = 2, right = u"R";
    EXPECT_EQ(toText(invoke(u"Join", {{}, {{2, &right}, {0, &left}, {1, &count}}})), u"L2R");
    EXPECT_EQ(toText(invoke(u"Join", {{&left}, {{1, &count}}})), u"L2");
}

TEST_F(DispatchTableTest, RefusesNamedArgumentsThatAreUnknownOrGivenTwice) {
    Value left = u"L", count = 2;
    EXPECT_EQ(codeOf([&] { invoke(u"Join", {{&left}, {{3, &count}}}); }), code::kParameterNotFound);
    EXPECT_EQ(codeOf([&] { invoke(u"Join", {{&left}, {{-1, &count}}}); }), code::kParameterNotFound);
    EXPECT_EQ(codeOf([&] { invoke(u"Join", {{&left, &count}, {{0, &left}}}); }), code::kBadParameterCount);
}

TEST_F(DispatchTableTest, GivesAMissingOptionalArgumentItsTypesEmptyValue) {
    EXPECT_EQ(toText(sample->invoke(u"Join", u"a", 1)), u"a1");
    EXPECT_EQ(toText(sample->invoke(u"Join", u"a", 1, Missing{})), u"a1");
}

TEST_F(DispatchTableTest, RefusesAMissingArgumentThatIsNotOptional) {
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Join", u"a"); }), code::kParameterNotOptional);
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Join", Missing{}, 1); }), code::kParameterNotOptional);
}

TEST_F(DispatchTableTest, RefusesTooManyArguments) {
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Join", u"a", 1, u"b", u"c"); }), code::kBadParameterCount);
}

TEST_F(DispatchTableTest, ConvertsArgumentsAndNamesTheOneThatCannotBe) {
    EXPECT_EQ(toText(sample->invoke(u"Join", 7, u"8", true)), u"78True");
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Join", u"a", 4e9); }), code::kOverflow);
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Join", Null{}, 1); }), code::kTypeMismatch);
    try {
        sample->invoke(u"Join", u"a", u"word");
        FAIL();
    } catch (const ArgumentError& error) {
        EXPECT_EQ(error.code(), code::kTypeMismatch);
        EXPECT_EQ(error.parameter(), 1U);
    }
}

TEST_F(DispatchTableTest, WritesOnlyByReferenceArgumentsBack) {
    Value values[] = {Value(u"21"), Value(1)};
    sample->call(u"Twice", values);
    EXPECT_TRUE(values[0] == Value(std::int16_t{42})) << "in the parameter's type";
    EXPECT_TRUE(values[1] == Value(1));
}

TEST_F(DispatchTableTest, LeavesAByReferenceArgumentThatTheMemberDidNotChangeInItsOwnType) {
    Value values[] = {Value(u" 0 "), Value(1)};
    sample->call(u"Twice", values);
    EXPECT_TRUE(values[0] == Value(u" 0 "));
}

TEST_F(DispatchTableTest, WritesNamedByReferenceArgumentsBack) {
    Value number = std::int16_t{4}, plain = std::int16_t{0};
    invoke(u"Twice", {{}, {{1, &plain}, {0, &number}}});
    EXPECT_TRUE(number == Value(std::int16_t{8}));
}

TEST_F(DispatchTableTest, WritesNothingBackWhenTheMemberFails) {
    Value values[] = {Value(u"before")};
    EXPECT_EQ(codeOf([&] { sample->call(u"Fail", values); }), code::kFailure);
    EXPECT_TRUE(values[0] == Value(u"before"));
}

TEST_F(DispatchTableTest, LetsTheErrorOfAMemberThroughUnchanged) {
    try {
        sample->invoke(u"Fail", u"");
        FAIL();
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.source(), u"source");
        EXPECT_EQ(error.description(), u"description");
    }
}

TEST_F(DispatchTableTest, DoesNotBlameTheCallerForArgumentsThatTheMemberGaveToOthers) {
    try {
        sample->invoke(u"Confuse", 1);
        FAIL();
    } catch (const ArgumentError&) {
        FAIL() << "the caller's argument was right";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.code(), code::kTypeMismatch);
    }
}

TEST_F(DispatchTableTest, ReadsAndWritesProperties) {
    sample->put(u"size", u"12");
    EXPECT_EQ(toInt32(sample->get(u"SIZE")), 12);
    EXPECT_EQ(toInt32(sample->invoke(u"Size")), 12) << "a property may be read as a method";
    EXPECT_EQ(codeOf([&] { sample->put(u"Size", u"word"); }), code::kTypeMismatch);
    EXPECT_EQ(sample->size, 12);
}

TEST_F(DispatchTableTest, AnswersForTheDefaultMemberByAnEmptyName) {
    EXPECT_EQ(toInt32(sample->get(u"")), 3);
    sample->put(u"", 4);
    EXPECT_EQ(sample->size, 4);
}

TEST_F(DispatchTableTest, PutsAPropertyThatTakesArguments) {
    Value place[] = {Value(u"2"), Value(3)};
    sample->putIndexed(u"Cell", place, 7.5);
    EXPECT_EQ(toText(sample->invoke(u"cell", 2, 3)), u"7.5");
    EXPECT_EQ(sample->cells.size(), 1U);
}

TEST_F(DispatchTableTest, AssignsToTheLastParameterAlsoWhenArgumentsAreLeftOutOrNamed) {
    Value row[] = {Value(4)};
    sample->putIndexed(u"Cell", row, u"short");
    EXPECT_EQ((sample->cells[{4, 0}]), u"short");
    const Member& put = *sample->dispatchTable().find(15, MemberKind::PropertyPut);
    Value column = 9, number = 8, text = u"named";
    invokeMember(*sample, put, {{}, {{1, &column}, {0, &number}}, &text});
    EXPECT_EQ((sample->cells[{8, 9}]), u"named");
}

TEST_F(DispatchTableTest, RefusesAPutWithTooManyArgumentsOrWithoutTheOneItNeeds) {
    Value three[] = {Value(1), Value(2), Value(3)};
    EXPECT_EQ(codeOf([&] { sample->putIndexed(u"Cell", three, u"x"); }), code::kBadParameterCount);
    EXPECT_EQ(codeOf([&] { sample->put(u"Cell", u"x"); }), code::kParameterNotOptional);
    EXPECT_EQ(codeOf([&] { sample->putIndexed(u"Size", {three, 1}, 1); }), code::kBadParameterCount);
    EXPECT_TRUE(sample->cells.empty());
    EXPECT_EQ(sample->size, 3);
}

TEST_F(DispatchTableTest, PassesArgumentsOnToTheDefaultMemberOfAPropertyThatTakesNone) {
    sample->child = std::make_shared<Shelf>();
    EXPECT_EQ(toText(sample->invoke(u"Child", u"x")), u"item x");
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Child", u"x", 2); }), code::kBadParameterCount);
    sample->child = nullptr;
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Child", u"x"); }), code::kObjectRequired);
    EXPECT_EQ(codeOf([&] { sample->invoke(u"Fixed", 1); }), code::kBadParameterCount)
        << "a number has no default member";
}

TEST_F(DispatchTableTest, TellsUnknownNamesFromMembersOfAnotherKind) {
    EXPECT_EQ(codeOf([&] { sample->get(u"Nowhere"); }), code::kUnknownName);
    EXPECT_EQ(codeOf([&] { sample->put(u"Fixed", 1); }), code::kMemberNotFound);
    EXPECT_EQ(codeOf([&] { sample->put(u"Join", 1); }), code::kMemberNotFound);
}

TEST(ObjectDefaults, RefuseToConnectAndCompareByIdentity) {
    const auto first = std::make_shared<Sample>();
    const auto second = std::make_shared<Sample>();
    EXPECT_EQ(codeOf([&] { first->connect(nullptr); }), code::kNoConnection);
    EXPECT_TRUE(sameObject(first, first));
    EXPECT_FALSE(sameObject(first, second));
    EXPECT_TRUE(sameObject(nullptr, nullptr));
    EXPECT_FALSE(sameObject(first, nullptr));
}

} // namespace
} // namespace cvlog::automation
