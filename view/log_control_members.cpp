// The members of the log control, with the dispatch ids that hosts are compiled against.

#include "automation/error.h"
#include "automation/member_builders.h"
#include "view/colour_bits.h"
#include "view/log_control.h"
#include "view/log_control_ids.h"

namespace cvlog::view {

using namespace automation;

namespace {

void refuseHandle(const LogControl& control) {
    if (control.designMode()) throw AutomationError(code::kSetNotPermitted, u"Set not permitted");
    throw AutomationError(code::kSetNotSupportedAtRunTime, u"Set not supported at run time");
}

} // namespace

const DispatchTable& LogControl::members() {
    using Self = LogControl;
    static const DispatchTable table = {
        readable<Self>(u"BackColor", kBackColorId, Type::Colour,
                       [](Self& self) { return toBits(self.lvLog().colours().back); }),
        settable<Self>(u"BackColor", kBackColorId, Type::Colour,
                       [](Self& self, const Value& value) { self.setBackColor(fromBits(value)); }),
        readable<Self>(u"Font", kFontId, Type::Object, [](Self& self) { return self.font(); }),
        settable<Self>(u"Font", kFontId, Type::Object,
                       [](Self& self, const Value& value) { self.setFont(value.as<ObjectRef>()); }),
        readable<Self>(u"ForeColor", kForeColorId, Type::Colour,
                       [](Self& self) { return toBits(self.lvLog().colours().fore); }),
        settable<Self>(u"ForeColor", kForeColorId, Type::Colour,
                       [](Self& self, const Value& value) { self.setForeColor(fromBits(value)); }),
        readable<Self>(u"Enabled", kEnabledId, Type::Boolean,
                       [](Self& self) { return self.lvLog().enabled(); }),
        settable<Self>(u"Enabled", kEnabledId, Type::Boolean,
                       [](Self& self, const Value& value) { self.setEnabled(value.as<bool>()); }),
        method<Self>(u"Refresh", kRefreshId, Type::Nothing, {},
                     [](Self& self, std::span<Value>) { self.lvLog().repaint(); }),
        readable<Self>(u"hwnd", kHwndId, Type::Int32, [](Self& self) { return self.lvLog().windowHandle(); }),
        settable<Self>(u"hwnd", kHwndId, Type::Int32, [](Self& self, const Value&) { refuseHandle(self); }),
        readable<Self>(u"Controls", kControlsId, Type::Object, [](Self& self) { return self.controls(); }),
        method<Self>(u"TextWidth", kTextWidthId, Type::Single, {{u"Str", Type::Text}},
                     [](Self& self, std::span<Value> values) {
                         return self.lvLog().textWidth(values[0].as<std::u16string>());
                     }),
        method<Self>(
            u"LogDblClick", kLogDblClickId, Type::Nothing, {{u"f", Type::Object}},
            [](Self& self, std::span<Value> values) { self.doubleClick(values[0].as<ObjectRef>()); }),
    };
    return table;
}

} // namespace cvlog::view
