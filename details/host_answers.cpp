#include "details/host_answers.h"

#include "base/failure.h"
#include "base/text.h"

#include <algorithm>

namespace cvlog::details {

namespace {

using base::isSame;
bool isSame(const EntityTypeAnswer& left, const EntityTypeAnswer& right) noexcept {
    return left.found == right.found && isSame(left.displayName, right.displayName) &&
           isSame(left.icon, right.icon);
}
bool isSame(const ObjectAnswer& left, const ObjectAnswer& right) noexcept {
    return left.found == right.found && isSame(left.displayName, right.displayName) &&
           isSame(left.id, right.id);
}

} // namespace

void DecodeBytes(core::Globals& globals, std::string_view bytes, std::u16string& text) {
    if (!base::isAscii(bytes)) return globals.platform.codePage.decode(bytes, text);
    text.resize(bytes.size());
    std::ranges::transform(bytes, text.begin(), [](char byte) { return static_cast<char16_t>(byte); });
}

const std::u16string& HostAnswers::textOf(HostName& name) const {
    if (name.text.empty()) DecodeBytes(globals_, name.bytes, name.text);
    return name.text;
}

template <class T>
void HostAnswers::keep(Answer<T>& answer, T now) const {
    if (answer.version == 0 || !isSame(now, answer.value)) {
        answer.value = std::move(now);
        ++answer.version;
    }
    answer.askedIn = round_;
}

// What fails finds nothing. It may have failed because its objects are not the host's any more.
template <class LookUp>
void HostAnswers::tryTo(LookUp&& lookUp) {
    if (!base::ignoring(lookUp)) letGo();
}

hostapi::Repository HostAnswers::repository() {
    if (!repository_) repository_ = globals_.store.Workspace.repository();
    return repository_;
}

hostapi::Collection HostAnswers::types() {
    if (!types_) types_ = repository().erd().entities();
    return types_;
}

void HostAnswers::ask(Answer<EntityTypeAnswer>& answer, HostName& name) {
    EntityTypeAnswer type;
    tryTo([&] {
        const hostapi::EntityType found(types().item(textOf(name)));
        type.found = static_cast<bool>(found);
        if (!type.found) return;
        base::ignoring([&] { type.displayName = found.displayName(); });
        base::ignoring([&] { type.icon = found.keyName(); });
    });
    keep(answer, std::move(type));
}

void HostAnswers::ask(Answer<ObjectAnswer>& answer, HostName& type, HostName& name) {
    ObjectAnswer object;
    tryTo([&] {
        const hostapi::RepositoryObject found = repository().findObject(textOf(type), textOf(name), u"");
        object.found = static_cast<bool>(found);
        if (!object.found) return;
        base::ignoring([&] { object.displayName = found.displayName(); });
        base::ignoring([&] { object.id = found.id(); });
    });
    keep(answer, std::move(object));
}

void HostAnswers::ask(Answer<std::u16string>& answer, HostName& code) const {
    keep(answer, globals_.store.Workspace.returnCodeText(textOf(code)));
}

} // namespace cvlog::details
