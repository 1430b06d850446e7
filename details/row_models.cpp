#include "details/row_models.h"

#include "base/byte_words.h"
#include "core/log_row_kind.h"

#include <algorithm>

namespace cvlog::details {

namespace {

using widgets::CellField;

// More is seldom met again: a file whose lines have little in common gains nothing from remembering.
constexpr std::size_t kMostRemembered = 4096;
constexpr std::size_t kMostModelsOfObject = 32;
// Brings a word to one of the slots, wherever in it words differ.
constexpr std::uint64_t kScatter = 0x9E37'79B9'7F4A'7C15;
constexpr int kSlotShift = 64 - 6;

// Of four to seven small letters. The bit that makes a letter small makes no other byte one.
bool isWord(std::string_view text, std::string_view letters) noexcept {
    return text.size() == letters.size() &&
           (base::shortWord(text) | (base::kEachByte * 0x20)) == base::shortWord(letters);
}

template <class T>
auto& entryOf(ByBytes<T>& entries, std::string_view key) {
    const auto known = entries.find(key);
    return known == entries.end() ? entries.emplace(key, T{}).first->second : known->second;
}

} // namespace

widgets::RowPtr EmptyChildRow() {
    auto keys = std::make_shared<std::vector<std::u16string>>();
    widgets::Row row;
    row.tag = core::kChildRowTag;
    for (const std::u16string_view key : kChildCellKeys) {
        keys->emplace_back(key);
        row.cells.push_back({std::u16string(key), {}, {}, {}, {}});
    }
    return widgets::makeRow(row, std::move(keys));
}

RowModels::RowModels(HostAnswers& host, const ExpandedEntry& entry) : host_(host) {
    const widgets::OwnText texts[] = {ownText(ChildCell::ObjID, CellField::Tag, entry.tag),
                                      ownText(ChildCell::Message, CellField::Tag, entry.path)};
    common_ = widgets::makeRowLike(EmptyChildRow(), texts);
}

RowModels::Severity RowModels::severityOf(std::string_view word) noexcept {
    if (isWord(word, "warning")) return Severity::Warning;
    return isWord(word, "error") ? Severity::Error : Severity::Other;
}

bool RowModels::Group::isOf(const ErrorLine& line) const noexcept {
    return base::equalBytes(objectName.bytes, line.objectName) &&
           base::equalBytes(typeName.bytes, line.typeName);
}

// Messages about one object come together and have several codes: their rows, which lie apart, are brought near at once
// rather than one by one.
void RowModels::Group::fetchRows() const noexcept {
    constexpr int kToWrite = 1;
    constexpr std::ptrdiff_t kNextLine = 64;
    for (const Model& model : models) {
        const auto* const row = reinterpret_cast<const char*>(model.row.get());
        if (!row) continue; // its answers failed
        __builtin_prefetch(row, kToWrite);
        __builtin_prefetch(row + kNextLine, kToWrite);
    }
}

bool RowModels::Model::isOf(Severity word, std::string_view bytes, std::uint64_t begin) const noexcept {
    return codeBegin == begin && codeSize == bytes.size() && severity == word &&
           (bytes.size() <= base::kBytesOfWord || code->code.bytes == bytes);
}

const widgets::RowPtr& RowModels::of(const ErrorLine& line) {
    if (!last_ || !last_->isOf(line)) {
        last_ = &groupOf(line);
        last_->fetchRows();
    }
    Group& group = *last_;
    const Severity severity = severityOf(line.severity);
    const std::uint64_t begin = base::firstWord(line.code);
    std::uint8_t& slot = group.slots[static_cast<std::size_t>(begin * kScatter >> kSlotShift)];
    Model* model = slot < group.models.size() ? &group.models[slot] : nullptr;
    if (!model || !model->isOf(severity, line.code, begin))
        model = &modelIn(group, severity, line.code, slot);
    if (model->askedIn != host_.round()) update(group, *model);
    return model->row;
}

RowModels::Model& RowModels::modelIn(Group& group, Severity severity, std::string_view code,
                                     std::uint8_t& slot) {
    const std::uint64_t begin = base::firstWord(code);
    const auto known = std::ranges::find_if(
        group.models, [&](const Model& model) { return model.isOf(severity, code, begin); });
    Model& model = known == group.models.end() ? addModel(group, severity, code) : *known;
    slot = static_cast<std::uint8_t>(&model - group.models.data());
    return model;
}

RowModels::Group& RowModels::groupOf(const ErrorLine& line) {
    key_.assign(line.typeName).append(1, '\n').append(line.objectName);
    Group& group = entryOf(groups_, key_);
    if (!group.type) {
        group.typeName.bytes = line.typeName;
        group.objectName.bytes = line.objectName;
        group.type = &entryOf(types_, line.typeName);
    }
    return group;
}

RowModels::Model& RowModels::addModel(Group& group, Severity severity, std::string_view bytes) {
    CodeText& code = entryOf(codes_, bytes);
    code.code.bytes = bytes;
    Model made;
    made.severity = severity;
    made.codeSize = static_cast<std::uint32_t>(bytes.size());
    made.codeBegin = base::firstWord(bytes);
    made.code = &code;
    if (group.models.size() < kMostModelsOfObject) return group.models.emplace_back(std::move(made));
    return group.models[group.oldest++ % kMostModelsOfObject] = std::move(made);
}

// Asks the host what was not asked yet. The row is still good when the answers are the same.
void RowModels::update(Group& group, Model& model) {
    if (!group.typeName.bytes.empty()) host_.refresh(*group.type, group.typeName);
    if (!group.objectName.bytes.empty()) host_.refresh(group.object, group.typeName, group.objectName);
    host_.refresh(model.code->text, model.code->code);
    const std::uint32_t versions = group.type->version + group.object.version + model.code->text.version;
    if (!model.row || model.versions != versions) model.row = makeRow(group, model);
    model.versions = versions;
    model.askedIn = host_.round();
}

widgets::RowPtr RowModels::makeRow(const Group& group, const Model& model) const {
    const EntityTypeAnswer& type = group.type->value;
    const ObjectAnswer& object = group.object.value;
    std::vector<widgets::OwnText> texts;
    const auto put = [&texts](ChildCell cell, CellField part, std::u16string_view text) {
        if (!text.empty()) texts.push_back(ownText(cell, part, text));
    };
    // The type's icon marks the object; where that is not found, the type.
    const bool hasIcon = !group.objectName.bytes.empty() && type.found;
    const std::u16string_view icon = hasIcon ? std::u16string_view(type.icon) : std::u16string_view();
    put(ChildCell::Type, CellField::Text, type.displayName);
    put(ChildCell::Type, CellField::Tag, type.icon);
    if (!object.found) put(ChildCell::Type, CellField::Icon, icon);
    put(ChildCell::Name, CellField::Text, object.displayName);
    put(ChildCell::Name, CellField::Tag, object.id);
    if (object.found) put(ChildCell::Name, CellField::Icon, icon);
    put(ChildCell::Result, CellField::Text, model.code->text.value);
    if (model.severity == Severity::Warning) put(ChildCell::Result, CellField::Icon, u"Suspect");
    if (model.severity == Severity::Error) put(ChildCell::Result, CellField::Icon, u"Bad");
    return widgets::makeRowLike(common_, texts);
}

void RowModels::forget() noexcept {
    host_.nextRound();
    if (groups_.size() <= kMostRemembered && codes_.size() <= kMostRemembered &&
        types_.size() <= kMostRemembered)
        return;
    last_ = nullptr;
    groups_.clear(); // before what they refer to
    types_.clear();
    codes_.clear();
}

} // namespace cvlog::details
