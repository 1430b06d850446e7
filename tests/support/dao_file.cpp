#include "tests/support/dao_file.h"

#include "automation/error.h"
#include "base/text.h"
#include "store/sql_statement.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace cvlog::tests {

using namespace automation;

void raise(DaoError error) {
    const auto number = static_cast<std::uint16_t>(error);
    throw AutomationError(code::of(0x800A0000u | number), u"Error " + base::decimal(number), u"DAO double");
}

Value DaoColumn::kept(const Value& value) const {
    if (kind == Kind::Counter) raise(DaoError::CannotBeUpdated);
    if (value.is<Null>()) return value;
    if (value.is<Empty>() || value.is<Missing>() || value.is<ErrorCode>() || value.is<ObjectRef>())
        raise(DaoError::Conversion);
    Value converted;
    try {
        converted = isText() ? convert(value, Type::Text)
                             : convert(value, kind == Kind::Long ? Type::Int32 : Type::Double);
    } catch (const AutomationError&) {
        raise(DaoError::Conversion);
    }
    if (!isText()) return converted;
    const std::size_t length = converted.as<std::u16string>().size();
    if (length == 0 && !zeroLength) raise(DaoError::ZeroLength);
    if (kind == Kind::Text && length > size) raise(DaoError::TooSmallForData);
    return converted;
}

std::size_t DaoTable::indexOf(std::u16string_view column) const {
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const DaoColumn& each) {
        return base::equalsIgnoringCase(each.name, column);
    });
    return static_cast<std::size_t>(found - columns.begin());
}

DaoColumn& DaoTable::column(std::u16string_view wanted) {
    const std::size_t index = indexOf(wanted);
    if (index == columns.size()) raise(DaoError::ItemNotFound);
    return columns[index];
}

/// One statement, read from its start.
class DaoStatement {
public:
    // What a client passes as a text ends at a NUL for some readers: here for all.
    DaoStatement(DaoFile& file, std::u16string_view sql)
        : file_(file), tokens_(store::sqlTokens(sql.substr(0, sql.find(u'\0')))) {}

    void execute() {
        if (takeWord(u"select")) raise(DaoError::CannotExecuteSelect);
        if (takeWord(u"create")) return createTable();
        if (takeWord(u"alter")) return addColumn();
        if (takeWord(u"delete")) return deleteRows();
        raise(DaoError::InvalidStatement);
    }

    DaoFile::Result select() {
        for (const std::u16string_view action : {u"create", u"alter", u"delete", u"insert", u"update"})
            if (takeWord(action)) raise(DaoError::InvalidOperation);
        if (!takeWord(u"select")) raise(DaoError::InputTableNotFound);
        std::vector<std::u16string> names;
        if (!takeMark(u'*')) do
                names.push_back(takeName(DaoError::InvalidStatement));
            while (takeMark(u','));
        DaoFile::Result result;
        result.table = &takeSource();
        const auto condition = takeCondition(*result.table);
        for (const DaoRow& row : result.table->rows)
            if (condition(row)) result.rows.push_back(row);
        takeOrder(result);
        end();
        for (const std::u16string& name : names) result.columns.push_back(indexIn(*result.table, name));
        if (names.empty())
            for (std::size_t i = 0; i < result.table->columns.size(); ++i) result.columns.push_back(i);
        return result;
    }

private:
    using Condition = std::function<bool(const DaoRow&)>;

    void createTable() {
        need(takeWord(u"table"), DaoError::SyntaxInCreateTable);
        DaoTable table;
        table.name = takeName(DaoError::SyntaxInCreateTable);
        need(takeMark(u'('), DaoError::SyntaxInCreateTable);
        do table.columns.push_back(takeColumn());
        while (takeMark(u','));
        need(takeMark(u')'), DaoError::SyntaxInCreateTable); // a default value is no part of this language
        end();
        if (file_.hasTable(table.name)) raise(DaoError::TableExists);
        file_.tables_.push_back(std::move(table));
    }

    void addColumn() {
        need(takeWord(u"table"), DaoError::InvalidStatement);
        const std::u16string name = takeName(DaoError::InvalidStatement);
        need(takeWord(u"add"), DaoError::InvalidStatement);
        takeWord(u"column");
        const DaoColumn column = takeColumn();
        end();
        if (!file_.hasTable(name)) raise(DaoError::TableDoesNotExist);
        DaoTable& table = file_.table(name);
        if (table.rowSets > 0) raise(DaoError::TableInUse);
        if (table.indexOf(column.name) < table.columns.size()) raise(DaoError::FieldExists);
        table.columns.push_back(column);
        for (DaoRow& row : table.rows)
            row.values.push_back(column.kind == DaoColumn::Kind::Counter ? Value(++table.lastNumber)
                                                                         : Value(Null{}));
    }

    void deleteRows() {
        takeMark(u'*');
        DaoTable& table = takeSource();
        const auto condition = takeCondition(table);
        end();
        std::erase_if(table.rows, condition);
    }

    DaoColumn takeColumn() {
        static const std::vector<std::pair<std::u16string_view, DaoColumn::Kind>> types = {
            {u"Counter", DaoColumn::Kind::Counter}, {u"Text", DaoColumn::Kind::Text},
            {u"LongText", DaoColumn::Kind::Memo},   {u"Memo", DaoColumn::Kind::Memo},
            {u"Integer", DaoColumn::Kind::Long},    {u"Long", DaoColumn::Kind::Long},
            {u"Double", DaoColumn::Kind::Double}};
        DaoColumn column;
        column.name = takeName(DaoError::SyntaxInFieldDefinition);
        for (const auto& [word, kind] : types)
            need(!base::equalsIgnoringCase(column.name, word), DaoError::SyntaxInFieldDefinition); // reserved
        const auto found =
            std::find_if(types.begin(), types.end(), [&](const auto& type) { return takeWord(type.first); });
        need(found != types.end(), DaoError::SyntaxInFieldDefinition);
        column.kind = found->second;
        if (column.kind == DaoColumn::Kind::Text && takeMark(u'(')) {
            column.size = static_cast<std::size_t>(takeNumber());
            need(column.size >= 1 && column.size <= 255 && takeMark(u')'), DaoError::SyntaxInFieldDefinition);
        }
        if (takeWord(u"not")) {
            need(takeWord(u"null"), DaoError::SyntaxInFieldDefinition);
            column.required = true;
        }
        return column;
    }

    DaoTable& takeSource() {
        need(takeWord(u"from"), DaoError::InvalidStatement);
        return file_.table(takeName(DaoError::InvalidStatement));
    }

    Condition takeCondition(const DaoTable& table) {
        if (!takeWord(u"where")) return [](const DaoRow&) { return true; };
        const std::size_t column = indexIn(table, takeName(DaoError::InvalidStatement));
        const bool less = takeMark(u'<');
        const bool greater = !less && takeMark(u'>');
        const bool equal = takeMark(u'=');
        need(less || greater || equal, DaoError::InvalidStatement);
        const double limit = takeNumber();
        return [=](const DaoRow& row) {
            const double number = toDouble(row.values[column]);
            return (less && number < limit) || (greater && number > limit) || (equal && number == limit);
        };
    }

    void takeOrder(DaoFile::Result& result) {
        if (!takeWord(u"order")) return;
        need(takeWord(u"by"), DaoError::InvalidStatement);
        const std::size_t column = indexIn(*result.table, takeName(DaoError::InvalidStatement));
        const bool descending = takeWord(u"desc");
        std::stable_sort(
            result.rows.begin(), result.rows.end(), [&](const DaoRow& left, const DaoRow& right) {
                const double a = toDouble(left.values[column]), b = toDouble(right.values[column]);
                return descending ? b < a : a < b;
            });
    }

    // A name that no column has stands for a parameter, which nobody has given.
    static std::size_t indexIn(const DaoTable& table, std::u16string_view column) {
        const std::size_t index = table.indexOf(column);
        if (index == table.columns.size()) raise(DaoError::TooFewParameters);
        return index;
    }

    void end() {
        takeMark(u';');
        need(next_ == tokens_.size(), DaoError::CharactersAfterEnd);
    }
    static void need(bool holds, DaoError error) {
        if (!holds) raise(error);
    }
    bool takeWord(std::u16string_view word) {
        const bool found = next_ < tokens_.size() && tokens_[next_].isWord(word);
        next_ += found ? 1 : 0;
        return found;
    }
    bool takeMark(char16_t mark) {
        const bool found = next_ < tokens_.size() && tokens_[next_].isMark(mark);
        next_ += found ? 1 : 0;
        return found;
    }
    std::u16string takeName(DaoError otherwise) {
        need(next_ < tokens_.size() && tokens_[next_].isName(), otherwise);
        return tokens_[next_++].text;
    }
    double takeNumber() {
        need(next_ < tokens_.size() && tokens_[next_].kind == store::SqlToken::Kind::Number,
             DaoError::InvalidStatement);
        return toDouble(Value(tokens_[next_++].text));
    }

    DaoFile& file_;
    std::vector<store::SqlToken> tokens_;
    std::size_t next_ = 0;
};

void DaoFile::execute(std::u16string_view sql) { DaoStatement(*this, sql).execute(); }

DaoFile::Result DaoFile::select(std::u16string_view sql) { return DaoStatement(*this, sql).select(); }

bool DaoFile::hasTable(std::u16string_view name) const {
    return std::any_of(tables_.begin(), tables_.end(),
                       [&](const DaoTable& each) { return base::equalsIgnoringCase(each.name, name); });
}

DaoTable& DaoFile::table(std::u16string_view name) {
    for (DaoTable& each : tables_)
        if (base::equalsIgnoringCase(each.name, name)) return each;
    raise(DaoError::InputTableNotFound);
}

void DaoFile::crash() {
    tables_ = stored_;
    for (DaoTable& table : tables_) table.rowSets = 0;
}

} // namespace cvlog::tests
