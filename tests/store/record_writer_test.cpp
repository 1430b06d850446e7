#include "store/record_writer.h"

#include "automation/error.h"
#include "base/failure.h"
#include "store/engine_error.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::store {
namespace {

using tests::LogWorld;

class RecordWriter : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.open());
        world.log->events().advise(sink);
        world.calls.restart();
    }
    Record record(bool method, bool object, bool message) {
        return {method ? u"M" : u"", 7, object ? objectOf(u"P1") : hostapi::RepositoryObject(),
                message ? u"X" : u"", u"e.errors"};
    }
    hostapi::RepositoryObject objectOf(const std::u16string& id) {
        return hostapi::RepositoryObject(world.host.objects.at(id));
    }
    void write(const Record& written) { WriteRecord(world.globals, *world.log, written); }
    const automation::Value& column(const std::u16string& name) {
        return world.engine.records().back().at(name);
    }

    LogWorld world;
    std::shared_ptr<tests::RecordingSink> sink = std::make_shared<tests::RecordingSink>();
};

struct Composition {
    bool method, object, message;
    const char16_t* text;
};

class ComposedMessage : public RecordWriter, public testing::WithParamInterface<Composition> {};

TEST_P(ComposedMessage, JoinsItsPartsExactly) {
    const Composition& row = GetParam();
    EXPECT_EQ(ComposeMessage(world.globals, record(row.method, row.object, row.message)), row.text);
}

INSTANTIATE_TEST_SUITE_P(
    All, ComposedMessage,
    testing::Values(Composition{true, true, true, u"M applied to Payroll program (Program) - RC 7. X"},
                    Composition{true, true, false, u"M applied to Payroll program (Program) - RC 7"},
                    Composition{true, false, true, u"M applied - RC 7. X"},
                    Composition{true, false, false, u"M applied - RC 7"},
                    Composition{false, true, true, u"Payroll program (Program) . X"},
                    Composition{false, true, false, u"Payroll program (Program) "},
                    Composition{false, false, true, u"X"}, Composition{false, false, false, u""}));

TEST_F(RecordWriter, CallsACompositeTypeTheProjectWhateverItsName) {
    Record composite = record(true, true, true);
    composite.Object = objectOf(u"PRJ");
    EXPECT_EQ(ComposeMessage(world.globals, composite), u"M applied to Demo project (Project) - RC 7. X");
    composite.MethodName.clear();
    EXPECT_EQ(ComposeMessage(world.globals, composite), u"Demo project (Project) . X");
}

TEST_F(RecordWriter, TranslatesOnlyTheTwoJoiners) {
    for (const auto language : {resources::Language::Japanese, resources::Language::Korean}) {
        world.globals.platform.language = language;
        EXPECT_EQ(ComposeMessage(world.globals, record(true, true, true)),
                  u"M" + std::u16string(resources::text(language, 516)) +
                      u"Payroll program (Program) - RC 7. X");
        EXPECT_EQ(ComposeMessage(world.globals, record(true, false, false)),
                  u"M" + std::u16string(resources::text(language, 515)) + u"- RC 7");
    }
}

TEST_F(RecordWriter, TakesTextsAsTheyAre) {
    Record odd = record(true, false, true);
    odd.MethodName = u"%1 %s";
    odd.Message = std::u16string(u"\r\n\t'\0\xD800", 6);
    EXPECT_EQ(ComposeMessage(world.globals, odd), u"%1 %s applied - RC 7. " + odd.Message);
}

TEST_F(RecordWriter, AssignsTheColumnsInTheirOrder) {
    write(record(true, true, true));
    EXPECT_EQ(world.calls.journalOf({"Recordset."}),
              (std::vector<std::string>{"Recordset.addNew", "Recordset.assign(MethodName)",
                                        "Recordset.assign(ObjectName)", "Recordset.assign(ObjectType)",
                                        "Recordset.assign(LogMessage)", "Recordset.assign(ReturnMessage)",
                                        "Recordset.assign(Errors)", "Recordset.update"}));
    EXPECT_EQ(automation::toText(column(u"LogMessage")),
              u"2024-01-02 09:05:07 M applied to Payroll program (Program) - RC 7. X");
    EXPECT_TRUE(column(u"ReturnMessage") == automation::Value(7)) << "the number, not its wording";
    EXPECT_EQ(automation::toText(column(u"ObjectType")), u"PROG");
    EXPECT_EQ(automation::toText(column(u"Errors")), u"e.errors");
}

TEST_F(RecordWriter, WritesEmptyTextsWhenThereIsNoObject) {
    write(record(false, false, false));
    for (const char16_t* name : {u"MethodName", u"ObjectName", u"ObjectType"})
        EXPECT_TRUE(column(name) == automation::Value(u"")) << "empty, not missing";
    EXPECT_EQ(automation::toText(column(u"LogMessage")), u"2024-01-02 09:05:07 ");
}

class FailingColumn : public RecordWriter, public testing::WithParamInterface<const char16_t*> {};

TEST_P(FailingColumn, StaysAtItsDefaultAndStopsNoOther) {
    auto& columns = world.engine.file(tests::kLogFile).at(u"LogInfo").columns;
    for (auto& known : columns)
        if (known.name == GetParam())
            known = {known.name, tests::FakeColumn::Kind::Text, 0, false}; // refuses any value
    write(record(true, true, true));
    ASSERT_EQ(world.engine.records().size(), 1U);
    for (const char16_t* name :
         {u"MethodName", u"ObjectName", u"ObjectType", u"LogMessage", u"ReturnMessage", u"Errors"})
        EXPECT_EQ(column(name).is<automation::Null>(), std::u16string_view(name) == GetParam());
    EXPECT_EQ(sink->ids.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Columns, FailingColumn,
                         testing::Values(u"MethodName", u"ObjectName", u"ObjectType", u"LogMessage",
                                         u"ReturnMessage", u"Errors"));

TEST_F(RecordWriter, LeavesTheObjectsNameOutWhenItsPropertyFails) {
    world.host.objects[u"P1"]->remove(u"Property");
    write(record(true, true, true));
    EXPECT_TRUE(column(u"ObjectName").is<automation::Null>());
    EXPECT_EQ(automation::toText(column(u"ObjectType")), u"PROG");
}

TEST_F(RecordWriter, LetsAFailingCompositionReachTheCallerAndWritesNothing) {
    world.host.objects[u"P1"]->remove(u"DisplayName");
    EXPECT_THROW(write(record(true, true, true)), automation::AutomationError);
    EXPECT_TRUE(world.engine.records().empty());
    EXPECT_TRUE(sink->ids.empty());
    EXPECT_EQ(world.calls.countOf("Recordset."), 0);
}

TEST_F(RecordWriter, RaisesTheEventOnceEvenWithoutADatabase) {
    world.globals.store.LogRecordset.reset();
    write(record(true, true, true));
    EXPECT_EQ(sink->ids, std::vector<std::int32_t>{1});
}

TEST_F(RecordWriter, WritesButRaisesNoEventWhileAnExpansionIsBusy) {
    world.globals.ExpansionBusy = true;
    write(record(true, true, true));
    EXPECT_EQ(world.engine.records().size(), 1U);
    EXPECT_TRUE(sink->ids.empty());
}

TEST_F(RecordWriter, KeepsAFailedRecordOutOfTheNextOne) {
    write(record(true, true, true));
    for (const int failing : {1, 8}) { // addNew, then update
        world.calls.restart();
        int seen = 0;
        world.calls.insideCall = [&](const std::string& name) {
            if (name.starts_with("Recordset.") && ++seen == failing)
                throw tests::CallCounter::injectedError();
        };
        Record lost = record(true, true, true);
        lost.MethodName = u"Lost";
        write(lost);
        world.calls.insideCall = nullptr;
        Record bare = record(false, false, false);
        bare.ErrorsFileName.clear();
        write(bare);
        EXPECT_EQ(automation::toText(column(u"MethodName")), u"");
        EXPECT_EQ(automation::toText(column(u"Errors")), u"");
    }
    EXPECT_EQ(world.engine.records().size(), 3U);
    EXPECT_EQ(automation::toText(world.engine.records().front().at(u"MethodName")), u"M")
        << "earlier records are untouched";
    EXPECT_EQ(sink->ids.size(), 5U);
}

TEST_F(RecordWriter, OrdersRecordsOfOneSecondByTheirNumber) {
    write(record(false, false, true));
    write(record(false, false, true));
    const auto& records = world.engine.records();
    EXPECT_TRUE(records[0].at(u"LogMessage") == records[1].at(u"LogMessage"));
    EXPECT_LT(automation::toInt32(records[0].at(u"RecordNum")),
              automation::toInt32(records[1].at(u"RecordNum")));
}

TEST_F(RecordWriter, WritesOneRecordForEachOfTwoWritingsThatRunIntoEachOther) {
    bool nested = false;
    world.host.objects[u"P1"]->before(u"Property", [&] {
        if (!std::exchange(nested, true)) write(record(false, false, true));
    });
    write(record(true, true, true));
    ASSERT_EQ(world.engine.records().size(), 2U);
    EXPECT_EQ(sink->ids.size(), 2U);
}

} // namespace
} // namespace cvlog::store
