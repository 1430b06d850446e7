#include "view/log_describer.h"

#include "platform/headless/headless_platform.h"
#include "resources/spoken_words.h"
#include "widgets/list_view.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using resources::Language;

class LogDescriberTest : public testing::Test {
protected:
    LogDescriberTest() {
        std::vector<widgets::Column> columns;
        for (const std::u16string_view caption : {u"Date", u"Elapsed", u"Method", u"Result", u"Message"}) {
            widgets::Column column;
            column.key = column.caption = caption;
            column.width = 1000;
            columns.push_back(column);
        }
        list_.setColumns(std::move(columns));
    }

    struct Texts {
        std::u16string date;
        std::u16string method;
        std::u16string result;
        std::u16string message;
    };
    void add(const Texts& texts, const std::u16string& icon, const std::u16string& tag = u"") {
        list_.append(widgets::makeRow({texts.date,
                                       tag,
                                       tag.empty() ? icon : u"",
                                       {{u"Elapsed", u"", u"", u"", u""},
                                        {u"Method", texts.method, u"", u"", u""},
                                        {u"Result", texts.result, u"", icon, u""},
                                        {u"Message", texts.message, u"", u"", u""}}}));
    }
    std::u16string description() const { return english_.rowDescription(list_, list_.rowCount()); }
    std::u16string name() const { return english_.rowName(list_, list_.rowCount()); }

    platform::headless::HeadlessPlatform platform_;
    widgets::ListView list_{platform_.collator, platform_.measurer};
    LogDescriber english_{Language::English};
};

TEST_F(LogDescriberTest, NamesAnEntryByItsDateAndTellsTheOtherColumns) {
    add({u"2026-03-14 15:09:26", u"Verify", u"0", u"all is well"}, u"Good");
    EXPECT_EQ(name(), u"2026-03-14 15:09:26");
    EXPECT_EQ(description(), u"Method: Verify; Result: succeeded, 0; Message: all is well");
}

TEST_F(LogDescriberTest, TellsColumnsInTheirOrderOnTheScreenAndHiddenOnesNotAtAll) {
    add({u"today", u"Verify", u"2", u"text"}, u"Bad");
    list_.setColumnPosition(5, 1);
    EXPECT_EQ(description(), u"Message: text; Method: Verify; Result: errors, 2");
    list_.setColumnWidth(3, 0);
    EXPECT_EQ(description(), u"Message: text; Result: errors, 2");
}

TEST_F(LogDescriberTest, SaysTheRowsOwnIconWhereNoShownColumnRepeatsIt) {
    add({u"today", u"Verify", u"-3", u"text"}, u"cancel");
    list_.setColumnWidth(4, 0);
    EXPECT_EQ(description(), u"canceled; Method: Verify; Message: text");
}

TEST_F(LogDescriberTest, SaysNothingOfIconsWithoutAMeaning) {
    add({u"today", u"Verify", u"", u""}, u"Program");
    EXPECT_EQ(description(), u"Method: Verify");
}

TEST_F(LogDescriberTest, NamesARowOfAnErrorsFileByItsMessageAndSaysWhatItIs) {
    add({u"", u"7", u"2", u"undeclared identifier"}, u"Bad", u"EXPANSION");
    EXPECT_EQ(name(), u"undeclared identifier");
    EXPECT_EQ(description(), u"error message of the entry above; Method: 7; Result: errors, 2");
}

TEST_F(LogDescriberTest, NamesARowWithoutDateByItsFirstText) {
    add({u"", u"", u"", u"Current session"}, u"Session");
    EXPECT_EQ(name(), u"Current session");
    EXPECT_EQ(description(), u"Result: current session");
    list_.append(widgets::makeRow({u"", u"expansion", u"", {}}));
    EXPECT_EQ(name(), u"");
    EXPECT_EQ(description(), u"error message of the entry above");
}

TEST_F(LogDescriberTest, SaysByWhatTheListIsSorted) {
    EXPECT_EQ(english_.listDescription(list_), u"");
    list_.setSort(2, widgets::SortOrder::Ascending);
    EXPECT_EQ(english_.listDescription(list_), u"") << "a key alone sorts nothing";
    list_.setSorted(true);
    EXPECT_EQ(english_.listDescription(list_), u"sorted by Method, ascending");
    list_.setSort(0, widgets::SortOrder::Descending);
    EXPECT_EQ(english_.listDescription(list_), u"sorted by Date, descending");
    list_.setSort(99, widgets::SortOrder::Descending);
    EXPECT_EQ(english_.listDescription(list_), u"") << "there is no such column";
}

TEST_F(LogDescriberTest, SpeaksTheUsersLanguage) {
    add({u"today", u"", u"0", u""}, u"Good");
    EXPECT_EQ(english_.listName(), u"Activity Log");
    const LogDescriber japanese(Language::Japanese);
    const LogDescriber korean(Language::Korean);
    EXPECT_EQ(japanese.listName(), resources::text(Language::Japanese, 513));
    EXPECT_EQ(japanese.rowDescription(list_, 1), u"Result: \u6210\u529F, 0");
    EXPECT_EQ(korean.rowDescription(list_, 1), u"Result: \uC131\uACF5, 0");
    EXPECT_EQ(korean.rowAction(), resources::spoken(Language::Korean, resources::Spoken::DoubleClick));
    list_.setSorted(true);
    EXPECT_EQ(japanese.listDescription(list_), u"Date \u306E\u6607\u9806\u3067\u4E26\u3079\u66FF\u3048");
}

} // namespace
} // namespace cvlog::view
