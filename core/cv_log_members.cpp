// The members of the log object, with the dispatch ids that hosts are compiled against.

#include "automation/member_builders.h"
#include "core/adding.h"
#include "core/cv_log.h"
#include "core/log_resources.h"
#include "core/series_report.h"
#include "host/log_visibility.h"
#include "store/log_database.h"

namespace cvlog::core {

using namespace automation;

namespace {

using Arguments = std::span<Value>;

constexpr std::int32_t kFontId = 0x6803001a;

// Placement by these four has never worked; old hosts still set them.
Member ignoredGet(std::u16string_view name, std::int32_t id) {
    return readable<CVLog>(name, id, Type::Single, [](CVLog&) { return 0.0F; });
}

Member ignoredPut(std::u16string_view name, std::int32_t id) {
    return settable<CVLog>(name, id, Type::Single, [](CVLog&, const Value&) {});
}

Member nothing(std::u16string_view name, std::int32_t id) {
    return method<CVLog>(name, id, Type::Nothing, {}, [](CVLog&, Arguments) {});
}

Value logDb(CVLog& log) {
    const auto& database = log.globals().store.LogDatabase;
    return database ? database->automationObject() : automation::ObjectRef();
}

void add(CVLog& log, Arguments a) {
    Add(log.globals(), log,
        {a[0].as<std::u16string>(), a[1].as<std::int32_t>(), a[2].as<std::u16string>(),
         a[3].as<std::u16string>(), a[4].as<std::u16string>()});
}

void keyDown(CVLog& log, Arguments a) {
    std::int16_t code = a[0].as<std::int16_t>();
    log.KeyDown(code, a[1].as<std::int16_t>());
    a[0] = code;
}

void move(CVLog& log, Arguments a) {
    host::MoveHostWindow(log.globals(), a[0].as<double>(), a[1].as<double>(), a[2].as<double>(),
                         a[3].as<double>());
}

bool openDb(CVLog& log, Arguments a) {
    const auto self = std::static_pointer_cast<CVLog>(log.shared_from_this());
    return store::OpenDB(log.globals(), self, a[0].as<automation::ObjectRef>());
}

} // namespace

const DispatchTable& CVLog::members() {
    using Self = CVLog;
    static const DispatchTable table = {
        nothing(u"Display", 0x60030008),
        readable<Self>(u"LogDB", 0x68030007, Type::Object, logDb),
        readable<Self>(u"Parent", 0x68030006, Type::Object,
                       [](Self& log) { return log.globals().placement.Parent; }),
        settable<Self>(
            u"Parent", 0x68030006, Type::Object,
            [](Self& log, const Value& parent) { host::PutParent(log.globals(), parent.as<ObjectRef>()); }),
        readable<Self>(u"Docked", 0x68030005, Type::Boolean,
                       [](Self& log) { return host::GetDocked(log.globals()); }),
        settable<Self>(
            u"Docked", 0x68030005, Type::Boolean,
            [](Self& log, const Value& docked) { host::PutDocked(log.globals(), docked.as<bool>()); }),
        ignoredGet(u"Left", 0x68030004),
        ignoredPut(u"Left", 0x68030004),
        ignoredGet(u"Top", 0x68030003),
        ignoredPut(u"Top", 0x68030003),
        ignoredGet(u"Height", 0x68030002),
        ignoredPut(u"Height", 0x68030002),
        ignoredGet(u"Width", 0x68030001),
        ignoredPut(u"Width", 0x68030001),
        readable<Self>(u"Visible", 0x68030000, Type::Boolean,
                       [](Self& log) { return host::GetVisible(log.globals()); }),
        settable<Self>(
            u"Visible", 0x68030000, Type::Boolean,
            [](Self& log, const Value& visible) { host::PutVisible(log.globals(), visible.as<bool>()); }),
        method<Self>(u"SetFocus", 0x6003000a, Type::Nothing, {},
                     [](Self& log, Arguments) { host::FocusLog(log.globals(), log); }),
        method<Self>(u"Dock", 0x6003000b, Type::Nothing, {{u"Parent", Type::Object}},
                     [](Self& log, Arguments a) { host::Dock(log.globals(), a[0].as<ObjectRef>()); }),
        method<Self>(u"SeriesFinish", 0x6003000c, Type::Nothing, {{u"ReturnCode", Type::Int32}},
                     [](Self& log, Arguments) { SeriesFinish(log.globals()); }),
        method<Self>(u"SeriesStart", 0x6003000d, Type::Nothing, {{u"MethodID", Type::Text}},
                     [](Self& log, Arguments) { SeriesStart(log.globals()); }),
        method<Self>(u"Add", 0x6003000e, Type::Nothing,
                     {{u"MethodID", Type::Text},
                      {u"ReturnCode", Type::Int32},
                      {u"ObjectID", Type::Text},
                      {u"Message", Type::Text},
                      optional(u"ErrorsFileName", Type::Text)},
                     add),
        method<Self>(u"Move", 0x6003000f, Type::Nothing,
                     {{u"Left", Type::Double},
                      {u"Top", Type::Double},
                      {u"Width", Type::Double},
                      {u"Height", Type::Double}},
                     move),
        method<Self>(u"OpenDB", 0x60030011, Type::Boolean,
                     {{.name = u"CVWS", .type = Type::Object, .byReference = true}}, openDb),
        method<Self>(u"CloseDB", 0x60030012, Type::Nothing, {},
                     [](Self& log, Arguments) { store::CloseDB(log.globals()); }),
        nothing(u"ShowHelp", 0x60030017),
        nothing(u"PopupMenu", 0x60030018),
        method<Self>(u"KeyDown", 0x60030019, Type::Nothing,
                     {{.name = u"KeyCode", .type = Type::Int16, .byReference = true},
                      {.name = u"Shift", .type = Type::Int16, .byReference = true}},
                     keyDown),
        readable<Self>(u"Font", kFontId, Type::Object, [](Self& log) { return ResourceFont(log.globals()); }),
        settable<Self>(
            u"Font", kFontId, Type::Object,
            [](Self& log, const Value& font) { SetResourceFont(log.globals(), font.as<ObjectRef>()); }),
    };
    return table;
}

} // namespace cvlog::core
