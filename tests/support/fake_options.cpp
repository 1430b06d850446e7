#include "tests/support/fake_options.h"

#include "base/text.h"

namespace cvlog::tests {

using automation::Value;

FakeOptions::FakeOptions(CallCounter& calls)
    : document(std::make_shared<ScriptObject>("Options", calls)), calls_(calls) {
    document->on(u"selectSingleNode",
                 [this](std::span<Value> arguments) { return select(automation::toText(arguments[0])); });
    document->on(u"Save", [](std::span<Value>) { return Value(); });
    document->raiseEvents();
}

Value FakeOptions::select(const std::u16string& query) const {
    Node node;
    if (query == u"//BOOL[@ID='LogKeepInSession']")
        node = keepInSession_;
    else if (query == u"//BOOL[@ID='LogDocked']")
        node = docked_;
    else if (query == u"//*[@ID='Editor']/GROUP[@NAME='ErrorsList']/BOOL")
        node = filters_.empty() ? nullptr : filters_.front();
    else
        throw automation::AutomationError(automation::code::kFailure, u"unexpected query: " + query);
    return node ? Value(node) : Value();
}

void FakeOptions::setKeepInSession(std::optional<std::u16string> value) {
    keepInSession_ = value ? makeNode("KeepInSession", std::nullopt, value) : nullptr;
}

void FakeOptions::setDocked(std::optional<std::u16string> value) {
    docked_ = value ? makeNode("Docked", std::nullopt, value) : nullptr;
}

std::shared_ptr<ScriptObject> FakeOptions::addFilter(std::optional<std::u16string> name,
                                                     std::optional<std::u16string> value) {
    Node node = makeNode("Filter", std::move(name), std::move(value));
    append(node);
    return node;
}

void FakeOptions::addComment() {
    Node node = makeNode("Comment", std::nullopt, std::nullopt);
    node->remove(u"getAttribute");
    append(std::move(node));
}

void FakeOptions::clearFilters() { filters_.clear(); }

void FakeOptions::append(Node node) {
    if (!filters_.empty()) filters_.back()->set(u"nextSibling", node);
    filters_.push_back(std::move(node));
}

FakeOptions::Node FakeOptions::makeNode(const std::string& name, std::optional<std::u16string> nameAttribute,
                                        std::optional<std::u16string> value) {
    auto node = std::make_shared<ScriptObject>(name, calls_);
    node->set(u"nextSibling", Value());
    const auto current = std::make_shared<std::optional<std::u16string>>(std::move(value));
    node->on(u"getAttribute", [nameAttribute, current](std::span<Value> arguments) -> Value {
        const auto& asked = automation::toText(arguments[0]) == u"NAME" ? nameAttribute : *current;
        return asked ? Value(*asked) : Value(automation::Null{});
    });
    node->on(u"setAttribute", [current](std::span<Value> arguments) {
        *current = automation::toText(arguments[1]);
        return Value();
    });
    return node;
}

} // namespace cvlog::tests
