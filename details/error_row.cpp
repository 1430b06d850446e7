#include "details/error_row.h"

#include "base/failure.h"
#include "core/log_row_kind.h"

#include <algorithm>

namespace cvlog::details {

namespace {

constexpr int kHiddenRecords = 512;

enum CellIndex : std::size_t { ObjID, Num, Type, Name, Result, Message };

constexpr char foldAscii(char byte) noexcept {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 0x20) : byte;
}

bool isWord(std::string_view text, std::string_view capitals) noexcept {
    return std::ranges::equal(text, capitals, {}, foldAscii);
}

bool isAscii(std::string_view bytes) noexcept {
    return std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace

ErrorRows::ErrorRows(core::Globals& globals, ExpandedEntry entry)
    : globals_(globals), entry_(std::move(entry)) {
    row_.tag = core::kChildRowTag;
    auto keys = std::make_shared<std::vector<std::u16string>>();
    for (const std::u16string_view key : kChildCellKeys) {
        keys->emplace_back(key);
        row_.cells.push_back({std::u16string(key), {}, {}, {}, {}});
    }
    keys_ = std::move(keys);
}

void ErrorRows::decode(std::string_view bytes, std::u16string& text) const {
    if (!isAscii(bytes)) return globals_.platform.codePage.decode(bytes, text);
    text.resize(bytes.size());
    std::ranges::transform(bytes, text.begin(), [](char byte) { return static_cast<char16_t>(byte); });
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

void ErrorRows::empty() {
    for (widgets::Cell& cell : row_.cells) {
        cell.text.clear();
        cell.tag.clear();
        cell.icon.clear();
    }
}

widgets::RowPtr ErrorRows::FillErrorRow(std::span<char> line, int n) {
    const ErrorLine parts = ParseErrorLine(line);
    if (isHidden(parts.code)) return {};

    // References into what is remembered stay good while more is added.
    const EntityType none;
    const EntityType& type = parts.typeName.empty() ? none : typeOf(parts.typeName);
    const NamedObject unnamed;
    const NamedObject& object =
        parts.objectName.empty() ? unnamed : objectOf(parts.typeName, parts.objectName);
    const std::u16string& result = textOf(parts.code);

    empty();
    row_.cells[ObjID].tag = entry_.tag;
    row_.cells[Num].tag = base::decimal(n);
    row_.cells[Type].text = type.displayName;
    row_.cells[Type].tag = type.icon;
    row_.cells[Name].text = object.displayName;
    row_.cells[Name].tag = object.id;
    // The type's icon marks the object; where that is not found, the type.
    if (!parts.objectName.empty() && type.found) row_.cells[object.found ? Name : Type].icon = type.icon;
    row_.cells[Result].text = result;
    if (isWord(parts.severity, "WARNING"))
        row_.cells[Result].icon = u"Suspect";
    else if (isWord(parts.severity, "ERROR"))
        row_.cells[Result].icon = u"Bad";
    decode(parts.message, row_.cells[Message].text);
    row_.cells[Message].tag = entry_.path;
    return widgets::makeRow(row_, keys_);
}

widgets::RowPtr ErrorRows::hiddenRecordsRow() const {
    widgets::Row row;
    row.tag = core::kChildRowTag;
    for (const std::u16string& key : *keys_) row.cells.push_back({key, {}, {}, {}, {}});
    row.cells[Message].text = resources::text(globals_.platform.language, kHiddenRecords);
    return widgets::makeRow(row, keys_);
}

void ErrorRows::forget() noexcept {
    types_.clear();
    objects_.clear();
    codes_.clear();
}

const ErrorRows::EntityType& ErrorRows::typeOf(std::string_view name) {
    std::string key(name);
    if (const auto known = types_.find(key); known != types_.end()) return known->second;
    return types_.emplace(std::move(key), askForType(decoded(name))).first->second;
}

const ErrorRows::NamedObject& ErrorRows::objectOf(std::string_view type, std::string_view name) {
    objectKey_.assign(type).append(1, '\n').append(name);
    if (const auto known = objects_.find(objectKey_); known != objects_.end()) return known->second;
    std::string key = objectKey_;
    return objects_.emplace(std::move(key), askForObject(decoded(type), decoded(name))).first->second;
}

const std::u16string& ErrorRows::textOf(std::string_view code) {
    std::string key(code);
    if (const auto known = codes_.find(key); known != codes_.end()) return known->second;
    std::u16string text = globals_.store.Workspace.returnCodeText(decoded(code));
    return codes_.emplace(std::move(key), std::move(text)).first->second;
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
