#include "details/row_models.h"

#include "core/log_row_kind.h"

#include <algorithm>

namespace cvlog::details {

namespace {

using widgets::CellField;

// More is seldom met again: a file whose lines have little in common gains nothing from remembering.
constexpr std::size_t kMostRemembered = 4096;
constexpr std::size_t kMostModelsOfObject = 32;

// Of small letters. The bit that makes a letter small makes no other byte one.
bool isWord(std::string_view text, std::string_view letters) noexcept {
    if (text.size() != letters.size()) return false;
    int different = 0;
    for (std::size_t i = 0; i < letters.size(); ++i) different |= (text[i] | 0x20) ^ letters[i];
    return different == 0;
}

// Codes mostly differ in their last characters.
bool isSameCode(std::string_view left, std::string_view right) noexcept {
    return left.size() == right.size() && (left.empty() || (left.back() == right.back() && left == right));
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

const widgets::RowPtr& RowModels::of(const ErrorLine& line) {
    Group& group = groupOf(line);
    Model& model = modelIn(group, line);
    update(group, model);
    return model.row;
}

RowModels::Severity RowModels::severityOf(std::string_view word) noexcept {
    if (isWord(word, "warning")) return Severity::Warning;
    return isWord(word, "error") ? Severity::Error : Severity::Other;
}

RowModels::Group& RowModels::groupOf(const ErrorLine& line) {
    if (last_ && last_->objectName == line.objectName && last_->typeName == line.typeName) return *last_;
    key_.assign(line.typeName).append(1, '\n').append(line.objectName);
    Group& group = entryOf(groups_, key_);
    if (!group.type) {
        group.typeName = line.typeName;
        group.objectName = line.objectName;
        group.type = &entryOf(types_, line.typeName);
    }
    last_ = &group;
    return group;
}

RowModels::Model& RowModels::modelIn(Group& group, const ErrorLine& line) {
    const Severity severity = severityOf(line.severity);
    for (Model& model : group.models)
        if (model.severity == severity && isSameCode(model.code->code, line.code)) return model;
    CodeText& code = entryOf(codes_, line.code);
    code.code = line.code;
    const Model made{severity, &code, {}, 0, 0, 0, 0};
    if (group.models.size() < kMostModelsOfObject) return group.models.emplace_back(made);
    return group.models[group.oldest++ % kMostModelsOfObject] = made;
}

// Asks the host what was not asked yet. The row is still good when the answers are the same.
void RowModels::update(Group& group, Model& model) {
    if (model.askedIn == host_.round()) return;
    if (!group.typeName.empty()) host_.refresh(*group.type, group.typeName);
    if (!group.objectName.empty()) host_.refresh(group.object, group.typeName, group.objectName);
    host_.refresh(model.code->text, model.code->code);
    const bool isGood = model.row && model.typeVersion == group.type->version &&
                        model.objectVersion == group.object.version &&
                        model.textVersion == model.code->text.version;
    if (!isGood) model.row = makeRow(group, model);
    model.typeVersion = group.type->version;
    model.objectVersion = group.object.version;
    model.textVersion = model.code->text.version;
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
    const bool hasIcon = !group.objectName.empty() && type.found;
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
