#pragma once

#include "core/globals.h"
#include "details/error_line.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cvlog::details {

/// The cells of a child row, in this order.
inline constexpr std::u16string_view kChildCellKeys[] = {u"ObjID", u"Num",    u"Type",
                                                         u"Name",  u"Result", u"Message"};

/// What all messages of one expansion have in common.
struct ExpandedEntry {
    std::u16string tag;  // the entry row's
    std::u16string path; // of the errors file
};

/// Makes the child rows of one expansion. What the host says about a type, an object or a code is asked once and kept
/// until `forget`, as the host's code may change it whenever it runs.
class ErrorRows {
public:
    ErrorRows(core::Globals& globals, ExpandedEntry entry);

    /// Makes the row of a line that is not empty, as the n-th of its entry; nothing for a line of a hidden kind. May
    /// run foreign code of the host, whose failing look-ups leave cells empty. Throws when the host has no text for
    /// the code.
    widgets::RowPtr FillErrorRow(std::span<char> line, int n);

    /// The row that says that messages are hidden. It belongs to no object and has no number.
    widgets::RowPtr hiddenRecordsRow() const;

    /// The host may have changed what it said.
    void forget() noexcept;

private:
    struct EntityType {
        bool found = false;
        std::u16string displayName;
        std::u16string icon;
    };
    struct NamedObject {
        bool found = false;
        std::u16string displayName;
        std::u16string id;
    };
    enum class Severity : char { Other, Warning, Error };
    /// What lines with the same fields have in common.
    struct Model {
        widgets::RowPtr row;
        std::uint32_t askedIn = 0; // the round in which the host's answers were compared last
    };
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>{}(text);
        }
    };
    template <class T>
    using ByText = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

    bool isHidden(std::string_view code);
    const widgets::RowPtr& modelOf(const ErrorLine& parts);
    widgets::RowPtr makeModel(const ErrorLine& parts, Severity severity, const widgets::RowPtr& before);
    const EntityType& typeOf(std::string_view name);
    const NamedObject& objectOf(std::string_view type, std::string_view name);
    const std::u16string& textOf(std::string_view code);
    EntityType askForType(std::u16string_view name) const;
    NamedObject askForObject(std::u16string_view type, std::u16string_view name) const;
    void decode(std::string_view bytes, std::u16string& text) const;
    std::u16string decoded(std::string_view bytes) const;

    core::Globals& globals_;
    widgets::RowPtr common_; // what all rows have in common
    std::u16string code_;
    std::u16string message_;
    std::string key_;
    std::uint32_t round_ = 1; // what the host said is forgotten with each
    ByText<Model> models_;
    ByText<EntityType> types_;
    ByText<NamedObject> objects_; // by type and name, with a LF between
    ByText<std::u16string> codes_;
};

} // namespace cvlog::details
