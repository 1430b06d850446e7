#include "details/host_answers.h"

#include "base/failure.h"
#include "details/byte_words.h"

#include <algorithm>

namespace cvlog::details {

bool IsAscii(std::string_view bytes) noexcept { return !AnyByte(bytes, BytesBeyondAscii); }

void DecodeBytes(core::Globals& globals, std::string_view bytes, std::u16string& text) {
    if (!IsAscii(bytes)) return globals.platform.codePage.decode(bytes, text);
    text.resize(bytes.size());
    std::ranges::transform(bytes, text.begin(), [](char byte) { return static_cast<char16_t>(byte); });
}

std::u16string HostAnswers::decoded(std::string_view bytes) const {
    std::u16string text;
    DecodeBytes(globals_, bytes, text);
    return text;
}

template <class T, class Ask>
void HostAnswers::askOnce(Answer<T>& answer, Ask&& ask) const {
    if (answer.askedIn == round_) return;
    T now = ask();
    if (answer.version == 0 || !(now == answer.value)) {
        answer.value = std::move(now);
        ++answer.version;
    }
    answer.askedIn = round_;
}

void HostAnswers::refresh(Answer<EntityTypeAnswer>& answer, std::string_view name) const {
    askOnce(answer, [&] {
        EntityTypeAnswer type;
        base::ignoring([&] {
            const hostapi::Repository repository = globals_.store.Workspace.repository();
            const hostapi::EntityType found(repository.erd().entities().item(decoded(name)));
            type.found = static_cast<bool>(found);
            if (!type.found) return;
            base::ignoring([&] { type.displayName = found.displayName(); });
            base::ignoring([&] { type.icon = found.keyName(); });
        });
        return type;
    });
}

void HostAnswers::refresh(Answer<ObjectAnswer>& answer, std::string_view type, std::string_view name) const {
    askOnce(answer, [&] {
        ObjectAnswer object;
        base::ignoring([&] {
            const hostapi::Repository repository = globals_.store.Workspace.repository();
            const hostapi::RepositoryObject found = repository.findObject(decoded(type), decoded(name), u"");
            object.found = static_cast<bool>(found);
            if (!object.found) return;
            base::ignoring([&] { object.displayName = found.displayName(); });
            base::ignoring([&] { object.id = found.id(); });
        });
        return object;
    });
}

void HostAnswers::refresh(Answer<std::u16string>& answer, std::string_view code) const {
    askOnce(answer, [&] { return globals_.store.Workspace.returnCodeText(decoded(code)); });
}

} // namespace cvlog::details
