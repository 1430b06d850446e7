#pragma once

#include "details/error_line.h"
#include "details/host_answers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::details {

/// The cells of a child row, in this order.
inline constexpr std::u16string_view kChildCellKeys[] = {u"ObjID", u"Num",    u"Type",
                                                         u"Name",  u"Result", u"Message"};

/// Where they are; cells count from 1.
enum class ChildCell : int { ObjID = 1, Num, Type, Name, Result, Message };
inline widgets::OwnText ownText(ChildCell cell, widgets::CellField part,
                                base::CompactTextView text) noexcept {
    return {static_cast<int>(cell), part, text};
}

/// What all messages of one expansion have in common.
struct ExpandedEntry {
    std::u16string tag;  // the entry row's
    std::u16string path; // of the errors file
};

/// A child row with nothing but its tag.
widgets::RowPtr EmptyChildRow();

/// Holds what the child rows of one expansion have in common: those on one object with one severity and one code are
/// alike but for number and message. What the host says is asked once and good until `forget`.
class RowModels {
public:
    RowModels(HostAnswers& host, const ExpandedEntry& entry);

    /// The row that the row of a line is like. May run foreign code of the host; throws when the host has no text for
    /// the code. Good until the next call.
    const widgets::RowPtr& of(const ErrorLine& line);

    /// The host may have changed what it said.
    void forget() noexcept;

private:
    static constexpr std::size_t kModelSlots = 64;
    enum class Severity : std::uint8_t { Other, Warning, Error };
    struct CodeText {
        HostName code;
        Answer<std::u16string> text;
    };
    struct Model {
        bool isOf(Severity word, std::string_view bytes, std::uint64_t begin) const noexcept;
        std::uint64_t codeBegin = 0; // this one and the next tell most codes apart
        std::uint32_t codeSize = 0;
        Severity severity = Severity::Other;
        CodeText* code = nullptr;
        widgets::RowPtr row;
        std::uint32_t versions = 0; // of the answers that the row was made of, added up: each only grows
        std::uint32_t askedIn = 0;  // the round in which the row was found to be good
    };
    /// The models of one object.
    struct Group {
        bool isOf(const ErrorLine& line) const noexcept;
        void fetchRows() const noexcept;
        HostName typeName;
        HostName objectName;
        Answer<EntityTypeAnswer>* type = nullptr;
        Answer<ObjectAnswer> object;
        std::vector<Model> models;
        std::array<std::uint8_t, kModelSlots> slots{}; // where the model of a code is likely to be
        std::size_t oldest = 0;                        // the model that gives way to the next one
    };

    static Severity severityOf(std::string_view word) noexcept;
    Group& groupOf(const ErrorLine& line);
    Model& modelIn(Group& group, Severity severity, std::string_view code, std::uint8_t& slot);
    Model& addModel(Group& group, Severity severity, std::string_view code);
    void update(Group& group, Model& model);
    widgets::RowPtr makeRow(const Group& group, const Model& model) const;

    HostAnswers& host_;
    widgets::RowPtr common_; // what all rows have in common
    std::string key_;
    Group* last_ = nullptr; // the one that was used last: messages about one object come together
    ByBytes<Group> groups_; // by type and object, with a LF between
    ByBytes<Answer<EntityTypeAnswer>> types_;
    ByBytes<CodeText> codes_;
};

} // namespace cvlog::details
