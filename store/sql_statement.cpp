#include "store/sql_statement.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <span>

namespace cvlog::store {

namespace {

using Tokens = std::span<const SqlToken>;
using Kind = SqlToken::Kind;

bool isBlank(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

bool isWordUnit(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || isDigit(unit) ||
           unit == u'_' || unit == u'$' || unit >= 0x80;
}

char16_t closingQuote(char16_t unit) { return unit == u'[' ? u']' : unit; }

class Scanner {
public:
    explicit Scanner(std::u16string_view sql) : sql_(sql) {}

    std::vector<SqlToken> tokens() {
        while (skipBlanksAndComments()) scanOne();
        return std::move(tokens_);
    }

private:
    bool at(std::u16string_view text) const { return sql_.substr(place_).starts_with(text); }
    void skipPast(std::u16string_view end) {
        const auto found = sql_.find(end, place_);
        place_ = found == std::u16string_view::npos ? sql_.size() : found + end.size();
    }

    bool skipBlanksAndComments() {
        while (place_ < sql_.size()) {
            if (isBlank(sql_[place_])) {
                ++place_;
            } else if (at(u"--")) {
                skipPast(u"\n");
            } else if (at(u"/*")) {
                place_ += 2;
                skipPast(u"*/");
            } else {
                return true;
            }
        }
        return false;
    }

    void scanOne() {
        const char16_t unit = sql_[place_];
        if (unit == u'"' || unit == u'`' || unit == u'[' || unit == u'\'') {
            scanQuoted(unit == u'\'' ? Kind::Text : Kind::Name, closingQuote(unit));
        } else if (isWordUnit(unit)) {
            const std::size_t begin = place_;
            while (place_ < sql_.size() && isWordUnit(sql_[place_])) ++place_;
            add(isDigit(unit) ? Kind::Number : Kind::Word, begin,
                std::u16string(sql_.substr(begin, place_ - begin)));
        } else {
            ++place_;
            add(Kind::Mark, place_ - 1, std::u16string(1, unit));
        }
    }

    void scanQuoted(Kind kind, char16_t closing) {
        const std::size_t begin = place_++;
        std::u16string text;
        for (; place_ < sql_.size(); ++place_) {
            if (sql_[place_] == closing) {
                const bool doubled =
                    closing != u']' && place_ + 1 < sql_.size() && sql_[place_ + 1] == closing;
                if (!doubled) {
                    ++place_;
                    break;
                }
                ++place_;
            }
            text += sql_[place_];
        }
        add(kind, begin, std::move(text));
    }

    void add(Kind kind, std::size_t begin, std::u16string text) {
        tokens_.push_back({kind, std::move(text), begin, place_});
    }

    std::u16string_view sql_;
    std::size_t place_ = 0;
    std::vector<SqlToken> tokens_;
};

// Words of the statement's start, e.g. "alter table"; the rest of the tokens when they are there.
std::optional<Tokens> after(Tokens tokens, std::initializer_list<std::u16string_view> words) {
    for (const std::u16string_view word : words) {
        if (tokens.empty() || !tokens.front().isWord(word)) return std::nullopt;
        tokens = tokens.subspan(1);
    }
    return tokens;
}

// Takes "T" or "main.T" off the tokens; empty when there is no name.
std::u16string takeTableName(Tokens& tokens) {
    if (tokens.size() >= 3 && tokens[0].isName() && tokens[1].isMark(u'.')) {
        if (!base::equalsIgnoringCase(tokens[0].text, u"main")) return {};
        tokens = tokens.subspan(2);
    }
    if (tokens.empty() || !tokens.front().isName()) return {};
    std::u16string name = tokens.front().text;
    tokens = tokens.subspan(1);
    return name;
}

Tokens withoutSemicolons(Tokens tokens) {
    while (!tokens.empty() && tokens.back().isMark(u';')) tokens = tokens.first(tokens.size() - 1);
    return tokens;
}

// What a counter is anyway.
bool saysOnlyCounter(Tokens tokens) {
    static constexpr std::array<std::u16string_view, 5> kWords = {u"not", u"null", u"unique", u"primary",
                                                                  u"key"};
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].isWord(u"constraint") && i + 1 < tokens.size() && tokens[i + 1].isName())
            ++i;
        else if (std::none_of(kWords.begin(), kWords.end(),
                              [&](auto word) { return tokens[i].isWord(word); }))
            return false;
    }
    return true;
}

bool namesPrimaryKey(Tokens tokens) {
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (tokens[i].isWord(u"primary") && tokens[i + 1].isWord(u"key")) return true;
    return false;
}

// The items between the brackets of a create statement.
std::vector<Tokens> splitDefinitions(Tokens tokens) {
    std::vector<Tokens> items;
    std::size_t first = 1;
    int depth = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        depth += tokens[i].isMark(u'(') ? 1 : tokens[i].isMark(u')') ? -1 : 0;
        if ((depth == 1 && tokens[i].isMark(u',')) || depth == 0) {
            items.push_back(tokens.subspan(first, i - first));
            first = i + 1;
        }
        if (depth == 0) break;
    }
    return items;
}

bool isCounterDefinition(Tokens definition) {
    return definition.size() >= 2 && definition[0].isName() && definition[1].isWord(u"Counter");
}

std::u16string counterAsKey(std::u16string_view sql, Tokens definition, bool keyElsewhere) {
    std::u16string result(sql);
    const bool hasKey = namesPrimaryKey(definition);
    if (keyElsewhere && !hasKey) return result;
    if (hasKey) {
        for (std::size_t i = definition.size() - 1; i > 0; --i)
            if (definition[i].isWord(u"key") && definition[i - 1].isWord(u"primary")) {
                result.insert(definition[i].end, u" autoincrement");
                break;
            }
    }
    const SqlToken& type = definition[1];
    return result.replace(type.begin, type.end - type.begin,
                          hasKey ? u"integer" : u"integer primary key autoincrement");
}

} // namespace

bool SqlToken::isWord(std::u16string_view word) const {
    return kind == Kind::Word && base::equalsIgnoringCase(text, word);
}

std::vector<SqlToken> sqlTokens(std::u16string_view sql) { return Scanner(sql).tokens(); }

std::optional<AddColumnStatement> parseAddColumn(std::u16string_view sql) {
    const std::vector<SqlToken> all = sqlTokens(sql);
    auto tokens = after(withoutSemicolons(all), {u"alter", u"table"});
    if (!tokens) return std::nullopt;
    AddColumnStatement statement;
    statement.table = takeTableName(*tokens);
    tokens = after(*tokens, {u"add"});
    if (statement.table.empty() || !tokens) return std::nullopt;
    if (const auto rest = after(*tokens, {u"column"})) tokens = rest;
    if (tokens->empty() || !tokens->front().isName()) return std::nullopt;
    statement.column = tokens->front().text;
    statement.isCounter = isCounterDefinition(*tokens) && saysOnlyCounter(tokens->subspan(2));
    return statement;
}

std::optional<CreateTableStatement> parseCreateTable(std::u16string_view sql) {
    const std::vector<SqlToken> all = sqlTokens(sql);
    auto tokens = after(all, {u"create", u"table"});
    if (!tokens) return std::nullopt;
    if (const auto rest = after(*tokens, {u"if", u"not", u"exists"})) tokens = rest;
    CreateTableStatement statement{takeTableName(*tokens), std::u16string(sql)};
    if (statement.table.empty() || tokens->empty() || !tokens->front().isMark(u'(')) return std::nullopt;
    const std::vector<Tokens> definitions = splitDefinitions(*tokens);
    const auto counter = std::find_if(definitions.begin(), definitions.end(), isCounterDefinition);
    if (counter != definitions.end()) {
        const bool keyElsewhere = std::any_of(definitions.begin(), definitions.end(), namesPrimaryKey);
        statement.sql = counterAsKey(sql, *counter, keyElsewhere);
    }
    return statement;
}

} // namespace cvlog::store
