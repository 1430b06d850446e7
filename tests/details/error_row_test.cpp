// What a child row shows of its line.

#include "details/error_row.h"

#include "tests/support/expansion_world.h"
#include "tests/support/failure_code.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using tests::errorLine;
using tests::ExpansionWorld;
using Calls = std::vector<std::string>;

class ErrorRow : public testing::Test {
protected:
    std::string fill(std::string line, int n = 1) {
        while (!line.empty() && line.back() < ' ') line.pop_back();
        const widgets::RowPtr row = rows.FillErrorRow(line, n);
        return row ? tests::rowText(*row) : "hidden";
    }
    /// What the cells after the number say.
    std::string cells(const std::string& line) {
        const std::string text = fill(line);
        return text.substr(text.find("|Type=") + 1);
    }
    Calls asked(std::string_view prefix) { return world.calls.journalOf({prefix}); }

    ExpansionWorld world{1};
    ErrorRows rows{world.globals, {u"P1", u"C:\\Proj\\given.errors"}};
};

TEST_F(ErrorRow, ShowsTypeObjectResultAndMessage) {
    EXPECT_EQ(fill(errorLine("PROG", "PAYROLL", "Error", "E1234", "File not found"), 7),
              "|expansion||ObjID={P1}|Num={7}|Type=Program{PROG}|Name=Payroll program{P1}[PROG]"
              "|Result=RC E1234[Bad]|Message=File not found{C:\\Proj\\given.errors}");
}

TEST_F(ErrorRow, OfAPlainLineHasNoTypeAndNoObjectButAResult) {
    EXPECT_EQ(fill("only text"), "|expansion||ObjID={P1}|Num={1}|Type=|Name=|Result=RC |Message=only text"
                                 "{C:\\Proj\\given.errors}");
    EXPECT_EQ(asked("Entities.Item"), Calls());
    EXPECT_EQ(asked("Repository.FindObject"), Calls());
    EXPECT_EQ(asked("Workspace.TranslateReturnCode"), (Calls{"Workspace.TranslateReturnCode()"}));
}

TEST_F(ErrorRow, OfATabAloneIsShownWithoutAMessage) {
    EXPECT_EQ(cells("\t"), "Type=|Name=|Result=RC |Message={C:\\Proj\\given.errors}");
}

TEST_F(ErrorRow, MarksTheObjectWithTheIconOfItsType) {
    EXPECT_TRUE(cells(errorLine("PROG", "PAYROLL", "", "", ""))
                    .starts_with("Type=Program{PROG}|Name=Payroll program{P1}[PROG]|"));
}

TEST_F(ErrorRow, MarksTheTypeInsteadOfAnObjectThatIsNotFound) {
    EXPECT_TRUE(
        cells(errorLine("PROG", "UNKNOWN", "", "", "")).starts_with("Type=Program{PROG}[PROG]|Name=|"));
}

TEST_F(ErrorRow, HasNoIconWithoutAnObjectNameOrAKnownType) {
    EXPECT_TRUE(cells(errorLine("PROG", "", "", "", "")).starts_with("Type=Program{PROG}|Name=|"));
    EXPECT_TRUE(
        cells(errorLine("WHAT", "PAYROLL", "", "", "")).starts_with("Type=|Name=Payroll program{P1}|"));
    EXPECT_TRUE(cells(errorLine("WHAT", "UNKNOWN", "", "", "")).starts_with("Type=|Name=|"))
        << "never the file's own words";
}

TEST_F(ErrorRow, AsksForTheObjectByTypeNameAndAnEmptyText) {
    fill(errorLine("PROG", "PAYROLL", "", "", ""));
    fill(errorLine("", "PAYROLL", "", "", ""));
    fill(errorLine("WHAT", "PAYROLL", "", "", ""));
    fill(errorLine("PROG", "", "", "", ""));
    EXPECT_EQ(asked("Repository.FindObject"),
              (Calls{"Repository.FindObject(PROG, PAYROLL, )", "Repository.FindObject(, PAYROLL, )",
                     "Repository.FindObject(WHAT, PAYROLL, )"}));
}

TEST_F(ErrorRow, KnowsSeveritiesInAnyCaseAndNoOtherWords) {
    const auto iconOf = [&](std::string_view severity) {
        const std::string text = cells(errorLine("", "", severity, "", ""));
        return text.substr(text.find("RC ") + 3, text.find("|Message") - text.find("RC ") - 3);
    };
    EXPECT_EQ(iconOf("Warning"), "[Suspect]");
    EXPECT_EQ(iconOf("wARNING"), "[Suspect]");
    EXPECT_EQ(iconOf("ERROR"), "[Bad]");
    for (const std::string_view word : {"", "Errors", "Err", "Info", "Warning ", "W"})
        EXPECT_EQ(iconOf(word), "");
}

TEST_F(ErrorRow, KeepsWhatTheHostDoesNotAnswerEmpty) {
    world.host.repository->remove(u"FindObject");
    world.host.erd->remove(u"Entities");
    EXPECT_EQ(cells(errorLine("PROG", "PAYROLL", "Error", "E1", "m")),
              "Type=|Name=|Result=RC E1[Bad]|Message=m{C:\\Proj\\given.errors}");
}

TEST_F(ErrorRow, FailsWithTheHostThatHasNoTextForTheCode) {
    world.host.workspace->raise(u"TranslateReturnCode",
                                automation::AutomationError(automation::code::kOverflow, u"no text"));
    EXPECT_EQ(tests::failureCode([&] { fill("text"); }), automation::code::kOverflow);
}

TEST_F(ErrorRow, AsksTheHostOnceForWhatIsTheSame) {
    for (int i = 0; i < 3; ++i) fill(errorLine("PROG", "PAYROLL", "Error", "E1", "m"));
    fill(errorLine("PROG", "UNKNOWN", "Error", "E2", "m"));
    fill(errorLine("PROG", "UNKNOWN", "Error", "E2", "m"));
    EXPECT_EQ(asked("Entities.Item").size(), 1U);
    EXPECT_EQ(asked("Repository.FindObject").size(), 2U) << "also that there is no such object";
    EXPECT_EQ(asked("Workspace.TranslateReturnCode").size(), 2U);
    EXPECT_EQ(asked("Workspace.Repository").size(), 1U);
    EXPECT_EQ(asked("ERD.Entities").size(), 1U);
    rows.forget();
    fill(errorLine("PROG", "PAYROLL", "Error", "E1", "m"));
    EXPECT_EQ(asked("Entities.Item").size(), 2U);
    EXPECT_EQ(asked("Repository.FindObject").size(), 3U);
    EXPECT_EQ(asked("Workspace.TranslateReturnCode").size(), 3U);
    EXPECT_EQ(asked("Workspace.Repository").size(), 2U);
    EXPECT_EQ(asked("ERD.Entities").size(), 2U);
}

TEST_F(ErrorRow, AsksForTheRepositoryAgainOnceItFailed) {
    world.host.repository->raise(u"FindObject",
                                 automation::AutomationError(automation::code::kOverflow, u"closed"));
    EXPECT_TRUE(
        cells(errorLine("PROG", "PAYROLL", "", "", "")).starts_with("Type=Program{PROG}[PROG]|Name=|"));
    fill(errorLine("PROG", "OTHER", "", "", ""));
    EXPECT_EQ(asked("Workspace.Repository").size(), 2U) << "it may not be the host's any more";
}

TEST_F(ErrorRow, HoldsNoObjectsOfTheHostOnceItForgot) {
    const auto uses = [&] { return world.host.repository.use_count() + world.host.entities.use_count(); };
    const auto before = uses();
    fill(errorLine("PROG", "PAYROLL", "Error", "E1", "m"));
    EXPECT_GT(uses(), before);
    rows.forget();
    EXPECT_EQ(uses(), before);
}

TEST_F(ErrorRow, SharesWithOthersWhatTheyHaveInCommon) {
    std::string first = errorLine("PROG", "PAYROLL", "Error", "E1", "one");
    std::string second = errorLine("PROG", "PAYROLL", "Error", "E1", "two");
    std::string third = errorLine("PROG", "PAYROLL", "Warning", "E1", "two");
    const widgets::RowPtr row = rows.FillErrorRow(first, 1);
    rows.forget();
    EXPECT_EQ(rows.FillErrorRow(second, 2)->model(), row->model()) << "the host said the same again";
    EXPECT_NE(rows.FillErrorRow(third, 3)->model(), row->model());
    world.host.objects[u"P1"]->set(u"DisplayName", u"Renamed");
    rows.forget();
    EXPECT_NE(rows.FillErrorRow(first, 4)->model(), row->model());
    EXPECT_EQ(row->cellText(4), u"Payroll program") << "a row never changes";
}

TEST_F(ErrorRow, FollowsEachAnswerOfTheHostThatChanges) {
    const std::string line = errorLine("PROG", "PAYROLL", "Error", "E1", "m");
    const auto after = [&](const auto& change) {
        fill(line);
        change();
        rows.forget();
        return cells(line);
    };
    const std::string path = "|Message=m{C:\\Proj\\given.errors}";
    EXPECT_EQ(after([&] { world.host.types[u"PROG"]->set(u"DisplayName", u"Other"); }),
              "Type=Other{PROG}|Name=Payroll program{P1}[PROG]|Result=RC E1[Bad]" + path);
    EXPECT_EQ(after([&] { world.host.types[u"PROG"]->set(u"KeyName", u"ICON"); }),
              "Type=Other{ICON}|Name=Payroll program{P1}[ICON]|Result=RC E1[Bad]" + path);
    EXPECT_EQ(after([&] { world.host.objects[u"P1"]->set(u"ID", u"P9"); }),
              "Type=Other{ICON}|Name=Payroll program{P9}[ICON]|Result=RC E1[Bad]" + path);
    EXPECT_EQ(after([&] {
                  world.host.workspace->on(u"TranslateReturnCode", [](std::span<automation::Value>) {
                      return automation::Value(u"new text");
                  });
              }),
              "Type=Other{ICON}|Name=Payroll program{P9}[ICON]|Result=new text[Bad]" + path);
    EXPECT_EQ(after([&] { world.host.repository->remove(u"FindObject"); }),
              "Type=Other{ICON}[ICON]|Name=|Result=new text[Bad]" + path);
}

TEST_F(ErrorRow, IsRightHoweverManyCodesAndObjectsThereAre) {
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 10'000; ++i) {
            const std::string code = "E" + std::to_string(i % 100);
            const std::string object = i % 3 == 0 ? "PAYROLL" : "O" + std::to_string(i);
            ASSERT_EQ(cells(errorLine("PROG", object, "Error", code, "m")),
                      (i % 3 == 0 ? "Type=Program{PROG}|Name=Payroll program{P1}[PROG]"
                                  : "Type=Program{PROG}[PROG]|Name=") +
                          ("|Result=RC " + code + "[Bad]|Message=m{C:\\Proj\\given.errors}"));
            if (i % 50 == 0) rows.forget();
        }
    }
}

TEST_F(ErrorRow, HasTheTextOfItsOwnCodeAndSeverityHoweverAlikeCodesAre) {
    const auto expected = [](const std::string& code, const char* icon) {
        return "Type=Program{PROG}|Name=Payroll program{P1}[PROG]|Result=RC " + code + icon +
               "|Message=m{C:\\Proj\\given.errors}";
    };
    for (int round = 0; round < 3; ++round)
        for (const std::string code :
             {"1", "11", "111", "E100", "E1001", "E10011", "E100110", "E1001101", "E10011010", "E10011011",
              "a long code of the kind that no tool has 1", "a long code of the kind that no tool has 2"}) {
            EXPECT_EQ(cells(errorLine("PROG", "PAYROLL", "Error", code, "m")), expected(code, "[Bad]"));
            EXPECT_EQ(cells(errorLine("PROG", "PAYROLL", "warning", code, "m")), expected(code, "[Suspect]"));
            EXPECT_EQ(cells(errorLine("PROG", "PAYROLL", "Note", code, "m")), expected(code, ""));
        }
}

TEST_F(ErrorRow, HasTheNumberThatItIsGiven) {
    for (const int number :
         {1, 2, 9, 10, 11, 99, 100, 1, 2, 7, 8, 1999, 2000, 999'999, 1'000'000, 1'000'001}) {
        const std::string text = fill(errorLine("PROG", "PAYROLL", "Error", "E1", "m"), number);
        EXPECT_NE(text.find("Num={" + std::to_string(number) + "}"), std::string::npos) << text;
    }
}

TEST_F(ErrorRow, OfTextBeyondAsciiIsDecodedInEveryPart) {
    world.host.addObject(u"U1", u"\u00C4RGER", u"\u00C4rger", u"PROG", u"");
    EXPECT_EQ(cells(errorLine("PROG", "\u00C4RGER", "Error", "\u00C9", "na\u00EFf")),
              "Type=Program{PROG}|Name=\u00C4rger{U1}[PROG]|Result=RC \u00C9[Bad]"
              "|Message=na\u00EFf{C:\\Proj\\given.errors}");
}

TEST_F(ErrorRow, ForHiddenRecordsHasItsTextAndNothingElse) {
    EXPECT_EQ(tests::rowText(*rows.hiddenRecordsRow()),
              "|expansion||ObjID=|Num=|Type=|Name=|Result=|Message=... Some records are hidden ...");
}

struct FilterCase {
    const char* name;
    const char* code;
    bool hidden;
};

class FilteredErrorRow : public ErrorRow, public testing::WithParamInterface<FilterCase> {};

TEST_P(FilteredErrorRow, IsHiddenByTheCharactersOfItsCode) {
    world.globals.options.ErrorsListFilter = {{u'E', true}, {u'4', true}, {u'W', false}};
    world.calls.restart();
    EXPECT_EQ(fill(errorLine("PROG", "PAYROLL", "Error", GetParam().code, "m")) == "hidden",
              GetParam().hidden);
    if (GetParam().hidden) {
        EXPECT_EQ(world.calls.count(), 0) << "the host is not asked about what is not shown";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Codes, FilteredErrorRow,
    testing::Values(FilterCase{"First", "E1234", true}, FilterCase{"AnyCase", "e1", true},
                    FilterCase{"Last", "W4", true}, FilterCase{"NextToLast", "W43", true},
                    FilterCase{"NoOther", "W433", false}, FilterCase{"Inside", "W4333", false},
                    FilterCase{"Empty", "", false}, FilterCase{"OneCharacter", "4", true},
                    FilterCase{"OneOtherCharacter", "W", false}, FilterCase{"UnknownKinds", "X99", false}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(ErrorRow, OfAPlainLineIsNeverHidden) {
    world.globals.options.ErrorsListFilter = {{u't', true}, {u'"', true}, {u' ', true}};
    EXPECT_NE(fill("text"), "hidden");
}

} // namespace
} // namespace cvlog::details
