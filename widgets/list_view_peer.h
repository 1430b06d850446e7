#pragma once

#include <cstdint>

namespace cvlog::widgets {

class ListView;

enum class MouseButton { Left, Right, Middle };

/// A key as the platform gives it. The handler sets `code` to 0 to consume it.
struct KeyEvent {
    std::int16_t code = 0;
    std::int16_t shift = 0; // bit 1 Shift, bit 2 Ctrl, bit 4 Alt
};

/// Shows a list on a platform. The list tells it typed changes; rows and columns count from 1. Between batchBegan and
/// batchEnded it may put off its own work, but the positions it is told are those of the moment of each change.
class ListViewPeer {
public:
    virtual ~ListViewPeer() = default;

    virtual void batchBegan() = 0;
    virtual void batchEnded() = 0;
    virtual void rowsInserted(int first, int count) = 0;
    virtual void rowsRemoved(int first, int count) = 0;
    virtual void rowsReordered() = 0;
    virtual void cleared() = 0;
    virtual void rowChanged(int row) = 0;
    /// The program changed selection or focus.
    virtual void selectionChanged() = 0;
    /// Width, order, caption, alignment or icon of a column.
    virtual void columnChanged(int column) = 0;
    /// Font, colours, enabled state or image lists.
    virtual void appearanceChanged() = 0;
    virtual void scrollTo(int row) = 0;
    virtual void repaint() = 0;
    virtual void takeFocus() = 0;

    /// The handle of the list's window, the same from creation to the end.
    virtual std::int32_t windowHandle() const = 0;
    /// The first row in view; 0 when there is none.
    virtual int topRow() const = 0;
};

/// What the user does in a list. The component handles it; windows only forward. An owner overrides what it handles.
class ListViewOwner {
public:
    virtual ~ListViewOwner() = default;
    virtual void columnClicked(int) {}
    virtual void doubleClicked() {}
    virtual void keyPressed(KeyEvent&) {}
    virtual void keyReleased(KeyEvent&) {}
    virtual void mouseReleased(MouseButton) {}
    virtual void gotFocus() {}
    virtual void lostFocus() {}
};

} // namespace cvlog::widgets
