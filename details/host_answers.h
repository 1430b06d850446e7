#pragma once

#include "core/globals.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cvlog::details {

/// Something that the host said. The version tells whether it said the same when it was asked again.
template <class T>
struct Answer {
    T value{};
    std::uint32_t version = 0; // 0: it was never asked
    std::uint32_t askedIn = 0; // the round of the question
};

struct EntityTypeAnswer {
    bool found = false;
    std::u16string displayName;
    std::u16string icon;
};

struct ObjectAnswer {
    bool found = false;
    std::u16string displayName;
    std::u16string id;
};

/// Finds things by bytes of an errors file, without making a string of them first.
struct BytesHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
        return std::hash<std::string_view>{}(text);
    }
};
template <class T>
using ByBytes = std::unordered_map<std::string, T, BytesHash, std::equal_to<>>;

/// A name as the file has it, and the host's text of it once that was needed.
struct HostName {
    std::string bytes;
    std::u16string text;
};

/// Asks the host about what the lines of an errors file name, once a round. A question may run any code of the host.
/// Look-ups that fail find nothing.
class HostAnswers {
public:
    explicit HostAnswers(core::Globals& globals) : globals_(globals) {}

    /// What was said before may not be true any more. Lets go of the host's objects.
    void nextRound() noexcept {
        ++round_;
        letGo();
    }
    std::uint32_t round() const noexcept { return round_; }

    // Each of these asks when that was not done in this round.
    void refresh(Answer<EntityTypeAnswer>& type, HostName& name) {
        if (type.askedIn != round_) ask(type, name);
    }
    void refresh(Answer<ObjectAnswer>& object, HostName& type, HostName& name) {
        if (object.askedIn != round_) ask(object, type, name);
    }
    /// Throws when the host has no text for the code.
    void refresh(Answer<std::u16string>& text, HostName& code) {
        if (text.askedIn != round_) ask(text, code);
    }

private:
    void ask(Answer<EntityTypeAnswer>& type, HostName& name);
    void ask(Answer<ObjectAnswer>& object, HostName& type, HostName& name);
    void ask(Answer<std::u16string>& text, HostName& code) const;
    template <class T>
    void keep(Answer<T>& answer, T now) const;
    const std::u16string& textOf(HostName& name) const;

    template <class LookUp>
    void tryTo(LookUp&& lookUp);
    hostapi::Repository repository();
    hostapi::Collection types();
    void letGo() noexcept {
        repository_ = {};
        types_ = {};
    }

    core::Globals& globals_;
    std::uint32_t round_ = 1;
    hostapi::Repository repository_; // of this round; null until it is needed
    hostapi::Collection types_;      // its entity types
};

/// Decodes bytes of the system's code page; `text` keeps its memory.
void DecodeBytes(core::Globals& globals, std::string_view bytes, std::u16string& text);

} // namespace cvlog::details
