#include "automation/error.h"
#include "base/text.h"
#include "tests/store/engine_contract.h"

#include <limits>

// The engine contract: what a column takes and gives back.

namespace cvlog::store::testbed {

using automation::AutomationError;
using automation::Null;
using automation::ObjectRef;
using automation::Value;

TEST_P(EngineContract, textHasItsLimitAndZeroLengthMustBeAllowed) {
    database_->execute(kAddRecordNum);
    database_->execute(kAddErrors);
    EXPECT_FALSE(database_->allowsZeroLength(u"LogInfo", u"Errors"));
    const auto rows = database_->openTable(u"LogInfo");
    rows->addNew();
    EXPECT_THROW(rows->assign(u"Errors", u""), AutomationError);
    EXPECT_NO_THROW(rows->assign(u"Errors", std::u16string(254, u'e')));
    EXPECT_THROW(rows->assign(u"Errors", std::u16string(255, u'x')), AutomationError);
    rows->update();
    EXPECT_EQ(column(u"Errors"), (std::vector<Value>{std::u16string(254, u'e')}));
}

TEST_P(EngineContract, zeroLengthOnceAllowedStaysAllowed) {
    database_->execute(kAddRecordNum);
    database_->execute(kAddErrors);
    auto rows = database_->openTable(u"LogInfo");
    rows->addNew();
    rows->update();
    if (!GetParam().changesTablesInUse) {
        EXPECT_THROW(database_->allowZeroLength(u"LogInfo", u"Errors"), AutomationError);
        rows->close();
        rows = nullptr;
    }
    database_->allowZeroLength(u"LogInfo", u"Errors");
    if (!rows) rows = database_->openTable(u"LogInfo");
    rows->addNew();
    EXPECT_NO_THROW(rows->assign(u"Errors", u""));
    rows->update();
    reopen();
    EXPECT_TRUE(database_->allowsZeroLength(u"LogInfo", u"Errors"));
    EXPECT_EQ(column(u"Errors"), (std::vector<Value>{Null{}, u""}));
}

TEST_P(EngineContract, theLimitCountsCodeUnitsBeyondNuls) {
    database_->execute(u"create table T (Brief Text(4))");
    const auto rows = database_->openTable(u"T");
    rows->addNew();
    EXPECT_NO_THROW(rows->assign(u"Brief", u"\U0001F600\U0001F600"));
    EXPECT_THROW(rows->assign(u"Brief", std::u16string(u"\0\0\0\0\0", 5)), AutomationError);
    EXPECT_THROW(rows->assign(u"Brief", u"\U0001F600\U0001F600x"), AutomationError);
}

TEST_P(EngineContract, everyCodeUnitOfATextComesBack) {
    const std::vector<std::u16string> texts = {
        u"plain",
        u"\u00E9\u4E2D\U0001F600",
        std::u16string(u"nul\0inside\0", 11),
        std::u16string(u"\0", 1),
        std::u16string(1, 0xD800),
        std::u16string(u"high ") + char16_t(0xDBFF) + u" then more",
        std::u16string(u"low ") + char16_t(0xDC00) + char16_t(0xD801) + u"\u00E9 then more",
        u"\uFEFFmarked",
        std::u16string(1, 0xFFFE) + u"swapped",
        u"\uFFFF\uFFFD",
        u"line\r\nbreak\ttab",
        u"007",
        std::u16string(100000, u'x'),
    };
    database_->execute(kAddRecordNum);
    for (const std::u16string& text : texts) append(text);
    reopen();
    const std::vector<Value> read = column(u"LogMessage");
    ASSERT_EQ(read.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_TRUE(read[i] == Value(texts[i])) << "text " << i;
}

TEST_P(EngineContract, everyCodeUnitRoundTrips) {
    std::u16string all;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        all += static_cast<char16_t>(unit);
        all += u'|'; // keeps surrogates lone
    }
    database_->execute(kAddRecordNum);
    append(all);
    EXPECT_TRUE(column(u"LogMessage").at(0) == Value(all));
}

TEST_P(EngineContract, numbersStayNumbers) {
    database_->execute(kAddRecordNum);
    database_->execute(u"alter table LogInfo add column Amount Double");
    const auto rows = database_->openTable(u"LogInfo");
    for (const std::int32_t number :
         {0, -1, 7, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
        rows->addNew();
        rows->assign(u"ReturnMessage", number);
        rows->assign(u"Amount", number + 0.5);
        rows->update();
    }
    const std::vector<Value> numbers = column(u"ReturnMessage");
    EXPECT_EQ(numbers, (std::vector<Value>{0, -1, 7, std::numeric_limits<std::int32_t>::min(),
                                           std::numeric_limits<std::int32_t>::max()}));
    EXPECT_EQ(column(u"Amount").at(2), Value(7.5));
}

TEST_P(EngineContract, valuesAreConvertedAsAutomationConverts) {
    database_->execute(kAddRecordNum);
    const auto rows = database_->openTable(u"LogInfo");
    rows->addNew();
    rows->assign(u"MethodName", 12);
    rows->assign(u"ReturnMessage", true);
    rows->assign(u"ObjectName", Null{});
    EXPECT_THROW(rows->assign(u"ObjectType", automation::Missing{}), AutomationError);
    EXPECT_THROW(rows->assign(u"ObjectType", ObjectRef()), AutomationError);
    rows->update();
    EXPECT_EQ(column(u"MethodName").at(0), Value(u"12"));
    EXPECT_EQ(column(u"ReturnMessage").at(0), Value(-1));
    EXPECT_EQ(column(u"ObjectName").at(0), Value(Null{}));
    EXPECT_EQ(column(u"ObjectType").at(0), Value(Null{}));
}

TEST_P(EngineContract, aRefusedValueLeavesTheColumnAndTheRest) {
    database_->execute(kAddRecordNum);
    const auto rows = database_->openTable(u"LogInfo");
    rows->addNew();
    rows->assign(u"MethodName", u"kept");
    EXPECT_THROW(rows->assign(u"MethodName", std::u16string(51, u'x')), AutomationError);
    EXPECT_THROW(rows->assign(u"Missing", 1), AutomationError);
    EXPECT_THROW(rows->assign(u"RecordNum", 99), AutomationError);
    rows->assign(u"ReturnMessage", 5);
    rows->update();
    EXPECT_EQ(column(u"MethodName"), (std::vector<Value>{u"kept"}));
    EXPECT_EQ(column(u"ReturnMessage"), (std::vector<Value>{5}));
    EXPECT_EQ(column(u"RecordNum"), (std::vector<Value>{1}));
}

TEST_P(EngineContract, columnsThatAreNotSetHaveTheirDefaults) {
    source_->makeTableWithDefaults(*database_);
    const auto rows = database_->openTable(u"T");
    rows->addNew();
    rows->update();
    rows->addNew();
    rows->assign(u"A", u"set");
    rows->update();
    const auto read = database_->openSnapshot(u"select * from T order by RecordNum");
    EXPECT_EQ(read->value(u"A"), Value(u"none"));
    EXPECT_EQ(read->value(u"B"), Value(3));
    read->moveNext();
    EXPECT_EQ(read->value(u"A"), Value(u"set"));
}

TEST_P(EngineContract, columnsAreReadInAnyOrderAndByAnyCase) {
    source_->makeTableWithDefaults(*database_);
    const auto rows = database_->openTable(u"T");
    for (const std::int32_t number : {7, 8}) {
        rows->addNew();
        rows->assign(u"B", number);
        rows->update();
    }
    const auto read = database_->openSnapshot(u"select * from T order by RecordNum");
    constexpr std::u16string_view kOrders[][4] = {{u"A", u"B", u"b", u"RecordNum"},
                                                  {u"B", u"RecordNum", u"A", u"b"}};
    const Value expected[][4] = {{u"none", 7, 7, 1}, {8, 2, u"none", 8}};
    Value value;
    for (std::size_t row = 0; row < 2; ++row, read->moveNext())
        for (std::size_t i = 0; i < 4; ++i) {
            read->read(kOrders[row][i], value);
            EXPECT_EQ(value, expected[row][i]) << row << ", " << i;
        }
    EXPECT_THROW(read->read(u"A", value), automation::AutomationError) << "after the last row";
}

TEST_P(EngineContract, whateverAColumnHoldsIsAppendedAsText) {
    source_->makeTableWithDefaults(*database_);
    database_->allowZeroLength(u"T", u"A");
    const auto rows = database_->openTable(u"T");
    for (const Value& text : {Value(u"gr\u00FC\u00DFe"), Value(Null{}), Value(u"")}) {
        rows->addNew();
        rows->assign(u"A", text);
        rows->update();
    }
    const auto read = database_->openSnapshot(u"select * from T order by RecordNum");
    const auto append = [&read](std::u16string_view begin) {
        base::CompactText text;
        text.append(begin);
        for (const std::u16string_view column : {u"A", u"RecordNum"}) read->appendText(column, text);
        read->moveNext();
        return text.isAscii() ? base::fromUtf8(text.ascii()) : text.wide();
    };
    EXPECT_EQ(append(u"first: "), u"first: gr\u00FC\u00DFe1");
    rows->addNew(); // from here on the snapshot has its rows in memory
    rows->update();
    EXPECT_EQ(append(u""), u"2") << "nothing for a column without a value";
    EXPECT_EQ(append(u"third: "), u"third: 3");
    EXPECT_THROW(append(u""), AutomationError) << "after the last row";
}

TEST_P(EngineContract, numbersAreReadAsTheyAreConverted) {
    source_->makeTableWithDefaults(*database_);
    const auto rows = database_->openTable(u"T");
    for (const Value& text : {Value(u"12"), Value(u"x"), Value(Null{})}) {
        rows->addNew();
        rows->assign(u"A", text);
        rows->assign(u"B", -5);
        rows->update();
    }
    const auto read = database_->openSnapshot(u"select * from T order by RecordNum");
    for (const std::int32_t record : {1, 2, 3}) {
        SCOPED_TRACE(record);
        EXPECT_EQ(read->readNumber(u"RecordNum"), record);
        EXPECT_EQ(read->readNumber(u"B"), -5);
        if (record == 1)
            EXPECT_EQ(read->readNumber(u"A"), 12);
        else
            EXPECT_THROW(read->readNumber(u"A"), AutomationError);
        EXPECT_THROW(read->readNumber(u"Missing"), AutomationError);
        if (record == 2) { // from here on the snapshot has its rows in memory
            rows->addNew();
            rows->update();
        }
        read->moveNext();
    }
    EXPECT_THROW(read->readNumber(u"B"), AutomationError) << "after the last row";
}

TEST_P(EngineContract, aColumnThatIsNotThereIsNotRead) {
    database_->execute(kAddRecordNum);
    append(u"a");
    const auto rows = database_->openSnapshot(u"select LogMessage from LogInfo");
    Value value;
    EXPECT_THROW(rows->read(u"Missing", value), automation::AutomationError);
    rows->read(u"LogMessage", value);
    EXPECT_EQ(value, Value(u"a"));
    rows->close();
    EXPECT_THROW(rows->read(u"LogMessage", value), automation::AutomationError);
}

} // namespace cvlog::store::testbed
