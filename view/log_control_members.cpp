// The members of the log control, with the dispatch ids that hosts are compiled against.

#include "automation/error.h"
#include "view/log_control.h"
#include "view/log_control_ids.h"

namespace cvlog::view {

namespace {

using automation::DispatchTable;
using automation::Member;
using automation::MemberKind;
using automation::on;
using automation::Type;
using automation::Value;
using Arguments = std::span<Value>;

template <class Handler>
Member readable(std::u16string_view name, std::int32_t id, Type type, Handler handler) {
    return {name, id, MemberKind::PropertyGet, type, {}, on<LogControl>(handler)};
}

template <class Handler>
Member settable(std::u16string_view name, std::int32_t id, Type type, Handler handler) {
    return {name, id, MemberKind::PropertyPut, Type::Nothing, {{name, type}}, on<LogControl>(handler)};
}

std::int32_t bits(std::uint32_t colour) { return static_cast<std::int32_t>(colour); }

std::uint32_t colour(const Value& value) { return static_cast<std::uint32_t>(value.as<std::int32_t>()); }

void refuseHandle(const LogControl& control) {
    if (control.designMode())
        throw automation::AutomationError(automation::code::kSetNotPermitted, u"Set not permitted");
    throw automation::AutomationError(automation::code::kSetNotSupportedAtRunTime,
                                      u"Set not supported at run time");
}

} // namespace

const DispatchTable& LogControl::members() {
    static const DispatchTable table = {
        readable(u"BackColor", kBackColorId, Type::Int32,
                 [](LogControl& control, Arguments) { return bits(control.lvLog().colours().back); }),
        settable(u"BackColor", kBackColorId, Type::Int32,
                 [](LogControl& control, Arguments a) { control.setBackColor(colour(a[0])); }),
        readable(u"Font", kFontId, Type::Object,
                 [](LogControl& control, Arguments) { return control.font(); }),
        settable(u"Font", kFontId, Type::Object,
                 [](LogControl& control, Arguments a) { control.setFont(a[0].as<automation::ObjectRef>()); }),
        readable(u"ForeColor", kForeColorId, Type::Int32,
                 [](LogControl& control, Arguments) { return bits(control.lvLog().colours().fore); }),
        settable(u"ForeColor", kForeColorId, Type::Int32,
                 [](LogControl& control, Arguments a) { control.setForeColor(colour(a[0])); }),
        readable(u"Enabled", kEnabledId, Type::Boolean,
                 [](LogControl& control, Arguments) { return control.lvLog().enabled(); }),
        settable(u"Enabled", kEnabledId, Type::Boolean,
                 [](LogControl& control, Arguments a) { control.setEnabled(a[0].as<bool>()); }),
        {u"Refresh",
         kRefreshId,
         MemberKind::Method,
         Type::Nothing,
         {},
         on<LogControl>([](LogControl& control, Arguments) { control.lvLog().repaint(); })},
        readable(u"hwnd", kHwndId, Type::Int32,
                 [](LogControl& control, Arguments) { return control.lvLog().windowHandle(); }),
        settable(u"hwnd", kHwndId, Type::Int32,
                 [](LogControl& control, Arguments) { refuseHandle(control); }),
        readable(u"Controls", kControlsId, Type::Object,
                 [](LogControl& control, Arguments) { return control.controls(); }),
        {u"TextWidth",
         kTextWidthId,
         MemberKind::Method,
         Type::Single,
         {{u"Str", Type::Text}},
         on<LogControl>([](LogControl& control, Arguments a) {
             return control.lvLog().textWidth(a[0].as<std::u16string>());
         })},
    };
    return table;
}

} // namespace cvlog::view
