#pragma once

#include "details/expansion.h"
#include "tests/support/fake_window.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::tests {

inline constexpr std::u16string_view kErrorsPath = u"C:\\Proj\\given.errors";
/// The text of the row that stands for lines that are not shown.
inline constexpr const char* kHiddenRecords = "... Some records are hidden ...";

/// An open log that keeps its rows, with three entries in every list; the middle one has an errors file.
struct ExpansionWorld : LogWorld {
    explicit ExpansionWorld(std::size_t lists = 2);
    ~ExpansionWorld();

    static constexpr int kEntry = 2;
    static constexpr int kEntries = 3;

    void writeErrors(std::string_view content) { platform.files.addFile(kErrorsPath, content); }
    /// So many lines that are shown: "line 1", "line 2"...
    void writeLines(int count);
    core::LogViews::ListRef view(std::size_t index = 0) const { return globals.LogViews.all().at(index); }
    void expand(std::size_t list = 0);
    /// Message texts of the rows below the entry, by a list's own order.
    std::vector<std::string> messages(std::size_t list = 0, int entry = kEntry);
    widgets::RowContent const& child(int n, std::size_t list = 0) { return this->list(list).row(kEntry + n); }
    platform::headless::FormBook& forms() { return platform.peers.forms; }
    /// Runs in the n-th yield, from 1.
    void atYield(int n, std::function<void()> action);
    /// The log lies in this window, which the host's last tool has.
    void dock(FakeWindow& window);
    /// The user at the strip, if there is one.
    void pressCancel();

    int lines = 0; // for tests that count
};

/// Nothing is left of an expansion: every list holds the same rows but for Message tags and shows them, each child row
/// lies below its own entry, nothing is busy, no file and no strip is open.
void expectNothingLeft(LogWorld& world);

/// In every list each message lies below the entry that it was made for. Holds at any time.
void expectMessagesBelowTheirEntry(LogWorld& world);

/// A line of an errors file.
std::string errorLine(std::string_view type, std::string_view object, std::string_view severity,
                      std::string_view code, std::string_view message);

} // namespace cvlog::tests
