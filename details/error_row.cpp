#include "details/error_row.h"

#include "base/failure.h"
#include "core/log_row_kind.h"

#include <algorithm>

namespace cvlog::details {

namespace {

using widgets::CellField;

constexpr int kHiddenRecords = 512;

// Cells count from 1.
enum CellIndex : int { ObjID = 1, Num, Type, Name, Result, Message };

// More would cost more than they save: a file whose lines have nothing in common.
constexpr std::size_t kMostModels = 4096;

constexpr char foldAscii(char byte) noexcept {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 0x20) : byte;
}

bool isWord(std::string_view text, std::string_view capitals) noexcept {
    return std::ranges::equal(text, capitals, {}, foldAscii);
}

bool isAscii(std::string_view bytes) noexcept {
    unsigned char all = 0;
    for (const char byte : bytes) all |= static_cast<unsigned char>(byte);
    return all < 0x80;
}

widgets::RowKeys childKeys() {
    auto keys = std::make_shared<std::vector<std::u16string>>();
    for (const std::u16string_view key : kChildCellKeys) keys->emplace_back(key);
    return keys;
}

widgets::RowPtr emptyChild() {
    const widgets::RowKeys keys = childKeys();
    widgets::Row row;
    row.tag = core::kChildRowTag;
    for (const std::u16string& key : *keys) row.cells.push_back({key, {}, {}, {}, {}});
    return widgets::makeRow(row, keys);
}

} // namespace

ErrorRows::ErrorRows(core::Globals& globals, ExpandedEntry entry) : globals_(globals), common_(emptyChild()) {
    common_ = common_->withCell(ObjID, CellField::Tag, entry.tag);
    common_ = common_->withCell(Message, CellField::Tag, entry.path);
}

void ErrorRows::decode(std::string_view bytes, std::u16string& text) const {
    if (isAscii(bytes))
        text.assign(bytes.begin(), bytes.end());
    else
        globals_.platform.codePage.decode(bytes, text);
}

std::u16string ErrorRows::decoded(std::string_view bytes) const {
    std::u16string text;
    decode(bytes, text);
    return text;
}

bool ErrorRows::isHidden(std::string_view code) {
    if (code.empty()) return false;
    decode(code, code_);
    const core::ErrorsListFilter& filter = globals_.options.ErrorsListFilter;
    return filter.hides(code_.front()) || filter.hides(code_.back()) ||
           (code_.size() > 1 && filter.hides(code_[code_.size() - 2]));
}

widgets::RowPtr ErrorRows::FillErrorRow(std::span<char> line, int n) {
    const ErrorLine parts = ParseErrorLine(line);
    if (isHidden(parts.code)) return {};
    const widgets::RowPtr& model = modelOf(parts);
    decode(parts.message, message_);
    const std::u16string number = base::decimal(n);
    const widgets::OwnText own[] = {{Num, CellField::Tag, number}, {Message, CellField::Text, message_}};
    return widgets::makeRowLike(model, own);
}

const widgets::RowPtr& ErrorRows::modelOf(const ErrorLine& parts) {
    const Severity severity = isWord(parts.severity, "WARNING") ? Severity::Warning
                              : isWord(parts.severity, "ERROR") ? Severity::Error
                                                                : Severity::Other;
    key_.assign(1, static_cast<char>(severity));
    key_.append(parts.code).append(1, '\n').append(parts.typeName).append(1, '\n').append(parts.objectName);
    const auto known = models_.find(std::string_view(key_));
    if (known != models_.end() && known->second.askedIn == round_) return known->second.row;
    std::string key = key_;
    widgets::RowPtr row =
        makeModel(parts, severity, known == models_.end() ? widgets::RowPtr() : known->second.row);
    if (models_.size() >= kMostModels) models_.clear();
    return (models_[std::move(key)] = {std::move(row), round_}).row;
}

// Asks the host, which may run any code. The row from before is still good when the answers are the same.
widgets::RowPtr ErrorRows::makeModel(const ErrorLine& parts, Severity severity,
                                     const widgets::RowPtr& before) {
    // References into what is remembered stay good while more is added.
    const EntityType none;
    const EntityType& type = parts.typeName.empty() ? none : typeOf(parts.typeName);
    const NamedObject unnamed;
    const NamedObject& object =
        parts.objectName.empty() ? unnamed : objectOf(parts.typeName, parts.objectName);
    const std::u16string& result = textOf(parts.code);

    // The type's icon marks the object; where that is not found, the type.
    const std::u16string_view icon =
        !parts.objectName.empty() && type.found ? std::u16string_view(type.icon) : std::u16string_view();
    const std::u16string_view mark = severity == Severity::Warning ? std::u16string_view(u"Suspect")
                                     : severity == Severity::Error ? std::u16string_view(u"Bad")
                                                                   : std::u16string_view();
    const widgets::OwnText texts[] = {{Type, CellField::Text, type.displayName},
                                      {Type, CellField::Tag, type.icon},
                                      {Type, CellField::Icon, object.found ? std::u16string_view() : icon},
                                      {Name, CellField::Text, object.displayName},
                                      {Name, CellField::Tag, object.id},
                                      {Name, CellField::Icon, object.found ? icon : std::u16string_view()},
                                      {Result, CellField::Text, result},
                                      {Result, CellField::Icon, mark}};
    if (before && before->has(texts)) return before;
    return widgets::makeRowLike(common_, texts);
}

widgets::RowPtr ErrorRows::hiddenRecordsRow() const {
    return emptyChild()->withCell(Message, CellField::Text,
                                  resources::text(globals_.platform.language, kHiddenRecords));
}

void ErrorRows::forget() noexcept {
    ++round_;
    types_.clear();
    objects_.clear();
    codes_.clear();
}

const ErrorRows::EntityType& ErrorRows::typeOf(std::string_view name) {
    if (const auto known = types_.find(name); known != types_.end()) return known->second;
    EntityType type = askForType(decoded(name));
    return types_.emplace(name, std::move(type)).first->second;
}

const ErrorRows::NamedObject& ErrorRows::objectOf(std::string_view type, std::string_view name) {
    std::string key(type);
    key.append(1, '\n').append(name);
    if (const auto known = objects_.find(key); known != objects_.end()) return known->second;
    NamedObject object = askForObject(decoded(type), decoded(name));
    return objects_.emplace(std::move(key), std::move(object)).first->second;
}

const std::u16string& ErrorRows::textOf(std::string_view code) {
    if (const auto known = codes_.find(code); known != codes_.end()) return known->second;
    std::u16string text = globals_.store.Workspace.returnCodeText(decoded(code));
    return codes_.emplace(code, std::move(text)).first->second;
}

ErrorRows::EntityType ErrorRows::askForType(std::u16string_view name) const {
    EntityType type;
    base::ignoring([&] {
        const hostapi::EntityType found(globals_.store.Workspace.repository().erd().entities().item(name));
        type.found = static_cast<bool>(found);
        if (!type.found) return;
        base::ignoring([&] { type.displayName = found.displayName(); });
        base::ignoring([&] { type.icon = found.keyName(); });
    });
    return type;
}

ErrorRows::NamedObject ErrorRows::askForObject(std::u16string_view type, std::u16string_view name) const {
    NamedObject object;
    base::ignoring([&] {
        const hostapi::RepositoryObject found =
            globals_.store.Workspace.repository().findObject(type, name, u"");
        object.found = static_cast<bool>(found);
        if (!object.found) return;
        base::ignoring([&] { object.displayName = found.displayName(); });
        base::ignoring([&] { object.id = found.id(); });
    });
    return object;
}

} // namespace cvlog::details
