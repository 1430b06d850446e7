#include "workbench/mouse_pointer.h"

namespace workbench {

HCURSOR cursorFor(int pointer) {
    switch (pointer) {
    case 11:
        return LoadCursorW(nullptr, IDC_WAIT);
    case 13:
        return LoadCursorW(nullptr, IDC_APPSTARTING);
    default:
        return LoadCursorW(nullptr, IDC_ARROW);
    }
}

bool showUnusual(int pointer) {
    if (pointer == 0) {
        return false;
    }
    SetCursor(cursorFor(pointer));
    return true;
}

} // namespace workbench
