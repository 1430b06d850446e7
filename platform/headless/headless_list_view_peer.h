#pragma once

#include "platform/headless/call_gate.h"
#include "widgets/list_view.h"

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace cvlog::platform::headless {

/// What all headless lists of one platform share: window handles, and the differences that the peers found.
struct PeerBook {
    std::int32_t nextHandle = 0x1234;
    std::deque<std::int32_t> handlesToGive; // given first; lets a test give a dead window's handle again
    std::set<std::int32_t> liveHandles;
    /// Where a mirror differed from its list, or a change could not be: empty as long as lists tell the truth.
    std::vector<std::string> faults;
};

/// Shows a list to nobody. It keeps a mirror of the list by applying the typed changes it is told, compares the mirror
/// with the list after every change, and plays the user.
class HeadlessListViewPeer : public widgets::ListViewPeer {
public:
    static constexpr int kRowsInView = 20;

    /// Without a mirror a change costs nothing, which measuring needs.
    HeadlessListViewPeer(widgets::ListView& list, const CallGate& gate, PeerBook& book, bool mirrored);
    ~HeadlessListViewPeer() override;

    void batchBegan() override;
    void batchEnded() override;
    void rowsInserted(int first, int count) override;
    void rowsRemoved(int first, int count) override;
    void rowsReordered() override;
    void cleared() override;
    void rowChanged(int row) override;
    void selectionChanged() override;
    void columnChanged(int column) override;
    void appearanceChanged() override;
    void scrollTo(int row) override;
    void repaint() override;
    void takeFocus() override;
    std::int32_t windowHandle() const override { return handle_; }
    int topRow() const override { return topRow_; }

    /// Compares the whole mirror with the list, columns included.
    void verify();

    /// How often a change was told, by the name of its function.
    int told(std::string_view change) const;
    /// The rows that scrollTo asked for, in order.
    const std::vector<int>& scrolledTo() const noexcept { return scrolledTo_; }

    // The user at the list's window.
    void userSelects(int row, bool selected);
    void userFocuses(int row);
    void userResizes(int column, base::Twips width);
    void userMoves(int column, int position);
    void userClicksHeader(int column);
    void userDoubleClicks();
    void userPresses(widgets::KeyEvent& key);
    void userReleases(widgets::KeyEvent& key);
    void userReleasesButton(widgets::MouseButton button);
    void userEnters();
    void userLeaves();

private:
    void begin(const char* change);
    void end(const char* change);
    void fault(const std::string& change, const std::string& what);
    bool validRow(const char* change, int row);
    void mirrorAllRows();
    void mirrorAllColumns();
    void compareRows(const char* change);
    void compareColumns(const char* change);
    bool isColumnCurrent(int column) const;

    widgets::ListView& list_;
    const CallGate& gate_;
    PeerBook& book_;
    bool mirrored_;
    std::int32_t handle_;
    std::vector<widgets::RowPtr> rows_;
    std::vector<widgets::Column> columns_;
    std::map<std::string, int, std::less<>> told_;
    std::vector<int> scrolledTo_;
    int topRow_ = 0;
    int batches_ = 0;
};

/// The headless peer of a list; the list must have one.
HeadlessListViewPeer& peerOf(const widgets::ListView& list);

} // namespace cvlog::platform::headless
