#include "core/options.h"

#include "automation/error.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::core {
namespace {

using Filter = ErrorsListFilter;
const automation::AutomationError kFailure(automation::code::kFailure, u"failure", u"Host");

class OptionsTest : public testing::Test {
protected:
    OptionsTest() { options().UserOptions = hostapi::OptionsDocument(world.host.options.document); }
    OptionState& options() { return world.globals.options; }
    void load() { LoadOptions(world.globals); }
    tests::LogWorld world;
};

struct WordCase {
    const char16_t* word;
    bool isTrue;
    bool isFalse;
};

class OptionWords : public OptionsTest, public testing::WithParamInterface<WordCase> {};

TEST_P(OptionWords, CompareWithoutRegardToCase) {
    world.host.options.setKeepInSession(GetParam().word);
    world.host.options.setDocked(GetParam().word);
    world.host.options.addFilter(u"Errors", GetParam().word);
    load();
    EXPECT_EQ(options().KeepInSession, GetParam().isTrue);
    EXPECT_EQ(options().DockedOption, GetParam().isTrue);
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', GetParam().isFalse}}));
}

INSTANTIATE_TEST_SUITE_P(Words, OptionWords,
                         testing::Values(WordCase{u"true", true, false}, WordCase{u"TRUE", true, false},
                                         WordCase{u"True", true, false}, WordCase{u"false", false, true},
                                         WordCase{u"FALSE", false, true}, WordCase{u"1", false, false},
                                         WordCase{u"yes", false, false}, WordCase{u"", false, false},
                                         WordCase{u" true", false, false}));

TEST_F(OptionsTest, KeepEarlierValuesWhenNodesAreMissingButForTheDockedState) {
    options().KeepInSession = options().DockedOption = true;
    options().ErrorsListFilter = {{u'X', true}};
    load();
    EXPECT_TRUE(options().KeepInSession);
    EXPECT_FALSE(options().DockedOption);
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'X', true}}));
}

TEST_F(OptionsTest, KeepAllEarlierValuesWhenTheQueriesFailOrThereIsNoDocument) {
    for (const bool document : {true, false}) {
        options().KeepInSession = options().DockedOption = true;
        options().ErrorsListFilter = {{u'X', true}};
        world.host.options.document->raise(u"selectSingleNode", kFailure);
        if (!document) options().UserOptions = {};
        EXPECT_NO_THROW(load());
        EXPECT_TRUE(options().KeepInSession);
        EXPECT_TRUE(options().DockedOption);
        EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'X', true}}));
    }
}

TEST_F(OptionsTest, ReadTheOthersWhenOneQueryFails) {
    world.host.options.setDocked(u"true");
    world.host.options.addFilter(u"Errors", u"false");
    int queries = 0;
    world.host.options.document->before(u"selectSingleNode", [&queries] {
        if (++queries == 1) throw kFailure;
    });
    options().KeepInSession = true;
    load();
    EXPECT_TRUE(options().KeepInSession);
    EXPECT_TRUE(options().DockedOption);
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', true}}));
}

TEST_F(OptionsTest, TakeAMissingValueForNeitherWord) {
    world.host.options.addFilter(u"Errors", std::nullopt);
    load();
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', false}}));
}

TEST_F(OptionsTest, KeyTheFilterByTheFirstCharacterOfTheName) {
    auto& host = world.host.options;
    host.addFilter(u"errors", u"false");
    host.addFilter(u"Warnings", u"true");
    host.addFilter(u"1st", u"false");
    host.addFilter(u"\u00E9tat", u"false");
    load();
    EXPECT_EQ(options().ErrorsListFilter,
              (Filter{{u'E', true}, {u'W', false}, {u'1', true}, {u'\u00C9', true}}));
}

TEST_F(OptionsTest, TakeTheFirstOfSeveralKindsWithOneLetterAndPassOverWhatHasNoName) {
    auto& host = world.host.options;
    host.addFilter(u"Errors", u"false");
    host.addComment();
    host.addFilter(u"", u"false");
    host.addFilter(std::nullopt, u"false");
    host.addFilter(u"else", u"true");
    host.addFilter(u"Info", u"false");
    load();
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', true}, {u'I', true}}));
}

TEST_F(OptionsTest, ReplaceTheWholeFilterWhenAnErrorsListIsFound) {
    options().ErrorsListFilter = {{u'X', true}, {u'E', false}};
    world.host.options.addFilter(u"Errors", u"false");
    load();
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', true}}));
}

TEST_F(OptionsTest, PassOverAKindWhoseAttributesCannotBeRead) {
    auto& host = world.host.options;
    host.addFilter(u"Errors", u"false");
    host.addFilter(u"Warnings", u"false")->raise(u"getAttribute", kFailure);
    host.addFilter(u"Notes", u"false")->on(u"getAttribute", [](std::span<automation::Value> arguments) {
        if (automation::toText(arguments[0]) == u"VALUE") throw automation::AutomationError(kFailure);
        return automation::Value(u"Notes");
    });
    host.addFilter(u"Info", u"false");
    load();
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', true}, {u'I', true}}));
}

TEST_F(OptionsTest, KeepTheKindsUpToANodeThatKnowsNoNextOne) {
    auto& host = world.host.options;
    host.setDocked(u"true");
    host.addFilter(u"Errors", u"false");
    host.addFilter(u"Warnings", u"false")->raise(u"nextSibling", kFailure);
    options().ErrorsListFilter = {{u'X', true}};
    load();
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', true}, {u'W', true}}));
    EXPECT_TRUE(options().DockedOption) << "what comes after them is read";
}

TEST_F(OptionsTest, TakeAHundredThousandKinds) {
    constexpr int kNodes = 100'000;
    auto& host = world.host.options;
    const auto node = host.addFilter(u"Errors", u"false"); // comes as often as one asks for the next
    int left = kNodes;
    node->on(u"nextSibling", [&](std::span<automation::Value>) {
        return --left > 0 ? automation::Value(node) : automation::Value();
    });
    node->on(u"getAttribute", [&](std::span<automation::Value> arguments) {
        if (automation::toText(arguments[0]) != u"NAME") return automation::Value(u"false");
        return automation::Value(left == 1 ? u"Last" : u"Errors");
    });
    load();
    EXPECT_EQ(left, 0);
    EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', true}, {u'L', true}}));
}

TEST_F(OptionsTest, AreReadToTheirEndWhenTheHostLetsGoOfTheDocumentMeanwhile) {
    for (const char16_t* call : {u"selectSingleNode", u"getAttribute", u"nextSibling"}) {
        tests::FakeHost host{world.calls};
        host.options.setKeepInSession(u"true");
        const auto node = host.options.addFilter(u"Errors", u"false");
        const auto object = call == std::u16string_view(u"selectSingleNode") ? host.options.document : node;
        const std::weak_ptr<tests::ScriptObject> document = host.options.document;
        options() = {};
        options().UserOptions = hostapi::OptionsDocument(host.options.document);
        object->before(call, [&] {
            host.options.document.reset();
            host.workspace->remove(u"UserOptions");
            ReleaseOptions(world.globals);
        });
        EXPECT_NO_THROW(load());
        EXPECT_FALSE(static_cast<bool>(options().UserOptions));
        if (object == node) {
            EXPECT_EQ(options().ErrorsListFilter, (Filter{{u'E', true}}));
            EXPECT_TRUE(document.expired());
        }
    }
}

TEST_F(OptionsTest, AreReadOnceEachInTheirOrder) {
    world.host.options.addFilter(u"Errors", u"false");
    world.calls.restart();
    load();
    EXPECT_EQ(world.calls.journalOf({"Options."}),
              (std::vector<std::string>{
                  "Options.selectSingleNode(//BOOL[@ID='LogKeepInSession'])",
                  "Options.selectSingleNode(//*[@ID='Editor']/GROUP[@NAME='ErrorsList']/BOOL)",
                  "Options.selectSingleNode(//BOOL[@ID='LogDocked'])"}));
}

} // namespace
} // namespace cvlog::core
