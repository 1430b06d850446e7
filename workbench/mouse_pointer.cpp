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

} // namespace workbench
