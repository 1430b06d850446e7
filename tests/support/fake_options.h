#pragma once

#include "tests/support/script_object.h"

#include <optional>

namespace cvlog::tests {

/// The host's options document: three places that the component's queries can reach, each scripted as nodes.
class FakeOptions {
public:
    explicit FakeOptions(CallCounter& calls);

    std::shared_ptr<ScriptObject> document;

    /// An absent node: nullopt.
    void setKeepInSession(std::optional<std::u16string> value);
    void setDocked(std::optional<std::u16string> value);

    /// Appends a BOOL node to the errors list; a missing attribute is nullopt and reads as Null.
    std::shared_ptr<ScriptObject> addFilter(std::optional<std::u16string> name,
                                            std::optional<std::u16string> value);
    /// Appends something that is no element: its attributes cannot be read.
    void addComment();
    void clearFilters();

private:
    using Node = std::shared_ptr<ScriptObject>;

    automation::Value select(const std::u16string& query) const;
    Node makeNode(const std::string& name, std::optional<std::u16string> nameAttribute,
                  std::optional<std::u16string> value);
    void append(Node node);

    CallCounter& calls_;
    Node keepInSession_;
    Node docked_;
    std::vector<Node> filters_;
};

} // namespace cvlog::tests
