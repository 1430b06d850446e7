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
    friend bool operator==(const EntityTypeAnswer&, const EntityTypeAnswer&) = default;
};

struct ObjectAnswer {
    bool found = false;
    std::u16string displayName;
    std::u16string id;
    friend bool operator==(const ObjectAnswer&, const ObjectAnswer&) = default;
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

/// Asks the host about what the lines of an errors file name, once a round. A question may run any code of the host.
/// Look-ups that fail find nothing.
class HostAnswers {
public:
    explicit HostAnswers(core::Globals& globals) : globals_(globals) {}

    /// What was said before may not be true any more.
    void nextRound() noexcept { ++round_; }
    std::uint32_t round() const noexcept { return round_; }

    // Each of these asks when that was not done in this round.
    void refresh(Answer<EntityTypeAnswer>& type, std::string_view name) const;
    void refresh(Answer<ObjectAnswer>& object, std::string_view type, std::string_view name) const;
    /// Throws when the host has no text for the code.
    void refresh(Answer<std::u16string>& text, std::string_view code) const;

private:
    template <class T, class Ask>
    void askOnce(Answer<T>& answer, Ask&& ask) const;
    std::u16string decoded(std::string_view bytes) const;

    core::Globals& globals_;
    std::uint32_t round_ = 1;
};

/// Whether bytes are the same text in every code page.
bool IsAscii(std::string_view bytes) noexcept;
/// Decodes bytes of the system's code page; `text` keeps its memory.
void DecodeBytes(core::Globals& globals, std::string_view bytes, std::u16string& text);

} // namespace cvlog::details
