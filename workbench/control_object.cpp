#include "workbench/control_object.h"

#include "workbench/control_container.h"
#include "workbench/failure.h"
#include "workbench/screen_scale.h"
#include "workbench/script_object.h"

namespace workbench {

namespace {

using WeakContainer = std::weak_ptr<ControlContainer>;

std::shared_ptr<ControlContainer> open(const WeakContainer& container) {
    auto found = container.lock();
    if (!found || !found->controlWindow()) {
        throw Failure(L"The control is closed");
    }
    return found;
}

void addVisibility(ScriptObject& object, const WeakContainer& container) {
    object.property(
        L"Visible", [=](const Arguments&) { return Variant(open(container)->visible()); },
        [=](const Arguments& arguments) {
            open(container)->show(arguments.boolean(0));
            return Variant();
        });
    object.member(L"ZOrder", [=](const Arguments& arguments) {
        if (arguments.count() == 0 || arguments.integer(0) == 0) {
            open(container)->bringToFront();
        } else {
            open(container)->sendToBack();
        }
        return Variant();
    });
    object.member(L"SetFocus", [=](const Arguments&) {
        open(container)->focus();
        return Variant();
    });
}

LONG left(const RECT& area) { return area.left; }
LONG top(const RECT& area) { return area.top; }
LONG width(const RECT& area) { return area.right - area.left; }
LONG height(const RECT& area) { return area.bottom - area.top; }

void moveLeft(RECT& area, LONG pixels) { OffsetRect(&area, pixels - area.left, 0); }
void moveTop(RECT& area, LONG pixels) { OffsetRect(&area, 0, pixels - area.top); }
void widen(RECT& area, LONG pixels) { area.right = area.left + pixels; }
void heighten(RECT& area, LONG pixels) { area.bottom = area.top + pixels; }

/// A measure of the control's area, read and written in twips.
void addMeasure(ScriptObject& object, const WeakContainer& container, const wchar_t* name,
                LONG (*read)(const RECT&), void (*write)(RECT&, LONG)) {
    object.property(
        name,
        [=](const Arguments&) {
            const auto found = open(container);
            return Variant(toTwips(found->controlWindow(), read(found->area())));
        },
        [=](const Arguments& arguments) {
            const auto found = open(container);
            RECT area = found->area();
            write(area, toPixels(found->controlWindow(), arguments.number(0)));
            found->place(area);
            return Variant();
        });
}

} // namespace

ComPtr<IDispatch> makeControlObject(const WeakContainer& container, ComPtr<IDispatch> members) {
    auto object = makeObject<ScriptObject>();
    object->member(L"Name", [=](const Arguments&) { return Variant(open(container)->name()); });
    addVisibility(*object.Get(), container);
    addMeasure(*object.Get(), container, L"Left", left, moveLeft);
    addMeasure(*object.Get(), container, L"Top", top, moveTop);
    addMeasure(*object.Get(), container, L"Width", width, widen);
    addMeasure(*object.Get(), container, L"Height", height, heighten);
    object->extend(std::move(members));
    return object;
}

} // namespace workbench
