#include "store/sql_statement.h"

#include "store/file_kind.h"
#include "store/sqlite_schema.h"

#include <gtest/gtest.h>

namespace cvlog::store {

namespace {

std::u16string createdSql(std::u16string_view sql) {
    const auto statement = parseCreateTable(sql);
    return statement ? statement->sql : std::u16string(u"not recognised");
}

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

} // namespace

TEST(SqlStatement, addColumnIsRecognisedInEveryDress) {
    for (const std::u16string_view sql : {
             u"alter table LogInfo add column RecordNum Counter",
             u"ALTER TABLE [LogInfo] ADD COLUMN [RecordNum] COUNTER;",
             u" alter\n table \"LogInfo\" add\tRecordNum counter ; ",
             u"alter table main.`LogInfo` add /* a */ column -- b\n RecordNum Counter not null primary key",
             u"alter table LogInfo add column RecordNum Counter constraint pk unique",
         }) {
        const auto statement = parseAddColumn(sql);
        ASSERT_TRUE(statement.has_value());
        EXPECT_EQ(statement->table, u"LogInfo");
        EXPECT_EQ(statement->column, u"RecordNum");
        EXPECT_TRUE(statement->isCounter);
    }
}

TEST(SqlStatement, otherColumnsAreNoCounters) {
    EXPECT_FALSE(parseAddColumn(u"alter table LogInfo add column Errors Text(254)")->isCounter);
    EXPECT_FALSE(parseAddColumn(u"alter table LogInfo add column Counter Text")->isCounter);
    EXPECT_FALSE(parseAddColumn(u"alter table LogInfo add column N Counter default 5")->isCounter);
    EXPECT_FALSE(parseAddColumn(u"alter table LogInfo add column N 'Counter'")->isCounter);
}

TEST(SqlStatement, otherStatementsAreNotTouched) {
    for (const std::u16string_view sql :
         {u"", u"alter", u"alter table", u"alter table T", u"alter table T add", u"alter table T add column",
          u"alter table T drop column C", u"alter table other.T add column C Counter", u"delete from T",
          u"'alter table", u"/* alter table T add column C Counter", u"alter index T add column C Counter"})
        EXPECT_FALSE(parseAddColumn(sql).has_value());
    EXPECT_FALSE(parseCreateTable(u"create table T as select 1").has_value());
    EXPECT_FALSE(parseCreateTable(u"create index T on U (Counter)").has_value());
    EXPECT_FALSE(parseCreateTable(u"create table").has_value());
}

TEST(SqlStatement, aCounterBecomesTheKeyOfANewTable) {
    EXPECT_EQ(createdSql(u"create table X (N Counter, A Text(254))"),
              u"create table X (N integer primary key autoincrement, A Text(254))");
    EXPECT_EQ(
        createdSql(u"create table X (A Text(9) default 'Counter, (', [N] COUNTER not null)"),
        u"create table X (A Text(9) default 'Counter, (', [N] integer primary key autoincrement not null)");
    EXPECT_EQ(createdSql(u"create table X (N Counter constraint k primary key, A Text)"),
              u"create table X (N integer constraint k primary key autoincrement, A Text)");
    EXPECT_EQ(createdSql(u"create table X (Id integer primary key, N Counter)"),
              u"create table X (Id integer primary key, N Counter)");
    EXPECT_EQ(createdSql(u"create table X (Counter Text, A check (A in (1, 2)))"),
              u"create table X (Counter Text, A check (A in (1, 2)))");
    EXPECT_EQ(createdSql(u"create table X (N Counter"), u"create table X (N Counter");
}

TEST(SqlStatement, aTextLimitIsReadFromTheDeclaredType) {
    EXPECT_EQ(textLimitOf(u"Text(254)"), 254u);
    EXPECT_EQ(textLimitOf(u"TEXT ( 1 )"), 1u);
    for (const std::u16string_view type :
         {u"Text", u"Text()", u"Text(0)", u"Text(x)", u"Text(1,2)", u"Text(-1)", u"varchar(20)", u"",
          u"Text(99999999999)", u"Text(1) x"})
        EXPECT_EQ(textLimitOf(type), std::nullopt);
}

TEST(FileKind, theFirstBytesTell) {
    using namespace std::string_view_literals;
    EXPECT_EQ(fileKind(bytesOf("SQLite format 3\0\x10\0\1\1"sv)), FileKind::Sqlite);
    EXPECT_EQ(fileKind(bytesOf("\0\1\0\0Standard Jet DB\0\1"sv)), FileKind::Jet);
    EXPECT_EQ(fileKind(bytesOf("\0\1\0\0Standard ACE DB\0\1"sv)), FileKind::Jet);
    for (const std::string_view other : {""sv, "S"sv, "SQLite format 3"sv, "SQLite format 4\0aaaa"sv,
                                         "\0\1\0\0"sv, "\0\1\0\0Standard Jot DB\0"sv, "xSQLite format 3\0"sv})
        EXPECT_EQ(fileKind(bytesOf(other)), FileKind::Unknown);
}

} // namespace cvlog::store
