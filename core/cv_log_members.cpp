// The members of the log object, with the dispatch ids that hosts are compiled against.

#include "core/adding.h"
#include "core/cv_log.h"
#include "core/log_resources.h"
#include "core/series_report.h"
#include "host/log_visibility.h"
#include "store/log_database.h"

namespace cvlog::core {

namespace {

using automation::DispatchTable;
using automation::Member;
using automation::MemberKind;
using automation::on;
using automation::Type;
using automation::Value;
using Arguments = std::span<Value>;

constexpr std::int32_t kFontId = 0x6803001a;

// Placement by these four has never worked; old hosts still set them.
Member ignoredGet(std::u16string_view name, std::int32_t id) {
    return {name,         id, MemberKind::PropertyGet,
            Type::Single, {}, on<CVLog>([](CVLog&, Arguments) { return 0.0F; })};
}

Member ignoredPut(std::u16string_view name, std::int32_t id) {
    return {name,
            id,
            MemberKind::PropertyPut,
            Type::Nothing,
            {{name, Type::Single}},
            on<CVLog>([](CVLog&, Arguments) {})};
}

Member nothing(std::u16string_view name, std::int32_t id) {
    return {name, id, MemberKind::Method, Type::Nothing, {}, on<CVLog>([](CVLog&, Arguments) {})};
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

Member property(std::u16string_view name, std::int32_t id, Type type, Value (*get)(CVLog&)) {
    return {name, id, MemberKind::PropertyGet,
            type, {}, on<CVLog>([get](CVLog& log, Arguments) {
                return get(log); })};
}

Member settable(std::u16string_view name, std::int32_t id, Type type, void (*put)(CVLog&, const Value&)) {
    return {name,
            id,
            MemberKind::PropertyPut,
            Type::Nothing,
            {{name, type}},
            on<CVLog>([put](CVLog& log, Arguments a) { put(log, a[0]); })};
}

bool openDb(CVLog& log, Arguments a) {
    const auto self = std::static_pointer_cast<CVLog>(log.shared_from_this());
    return store::OpenDB(log.globals(), self, a[0].as<automation::ObjectRef>());
}

} // namespace

const DispatchTable& CVLog::members() {
    static const DispatchTable table = {
        nothing(u"Display", 0x60030008),
        {u"LogDB",
         0x68030007,
         MemberKind::PropertyGet,
         Type::Object,
         {},
         on<CVLog>([](CVLog& log, Arguments) { return logDb(log); })},
        property(u"Parent", 0x68030006, Type::Object,
                 [](CVLog& log) { return Value(log.globals().placement.Parent); }),
        settable(u"Parent", 0x68030006, Type::Object,
                 [](CVLog& log, const Value& parent) {
                     host::PutParent(log.globals(), parent.as<automation::ObjectRef>());
                 }),
        property(u"Docked", 0x68030005, Type::Boolean,
                 [](CVLog& log) { return Value(host::GetDocked(log.globals())); }),
        settable(u"Docked", 0x68030005, Type::Boolean,
                 [](CVLog& log, const Value& docked) { host::PutDocked(log.globals(), docked.as<bool>()); }),
        ignoredGet(u"Left", 0x68030004),
        ignoredPut(u"Left", 0x68030004),
        ignoredGet(u"Top", 0x68030003),
        ignoredPut(u"Top", 0x68030003),
        ignoredGet(u"Height", 0x68030002),
        ignoredPut(u"Height", 0x68030002),
        ignoredGet(u"Width", 0x68030001),
        ignoredPut(u"Width", 0x68030001),
        property(u"Visible", 0x68030000, Type::Boolean,
                 [](CVLog& log) { return Value(host::GetVisible(log.globals())); }),
        settable(
            u"Visible", 0x68030000, Type::Boolean,
            [](CVLog& log, const Value& visible) { host::PutVisible(log.globals(), visible.as<bool>()); }),
        {u"SetFocus", 0x6003000a, MemberKind::Method, Type::Nothing, {}, on<CVLog>([](CVLog& log, Arguments) {
             host::FocusLog(log.globals(), log);
         })},
        {u"Dock",
         0x6003000b,
         MemberKind::Method,
         Type::Nothing,
         {{u"Parent", Type::Object}},
         on<CVLog>(
             [](CVLog& log, Arguments a) { host::Dock(log.globals(), a[0].as<automation::ObjectRef>()); })},
        {u"SeriesFinish",
         0x6003000c,
         MemberKind::Method,
         Type::Nothing,
         {{u"ReturnCode", Type::Int32}},
         on<CVLog>([](CVLog& log, Arguments) { SeriesFinish(log.globals()); })},
        {u"SeriesStart",
         0x6003000d,
         MemberKind::Method,
         Type::Nothing,
         {{u"MethodID", Type::Text}},
         on<CVLog>([](CVLog& log, Arguments) { SeriesStart(log.globals()); })},
        {u"Add",
         0x6003000e,
         MemberKind::Method,
         Type::Nothing,
         {{u"MethodID", Type::Text},
          {u"ReturnCode", Type::Int32},
          {u"ObjectID", Type::Text},
          {u"Message", Type::Text},
          {.name = u"ErrorsFileName", .type = Type::Text, .optional = true}},
         on<CVLog>(add)},
        {u"Move",
         0x6003000f,
         MemberKind::Method,
         Type::Nothing,
         {{u"Left", Type::Double},
          {u"Top", Type::Double},
          {u"Width", Type::Double},
          {u"Height", Type::Double}},
         on<CVLog>(move)},
        {u"OpenDB",
         0x60030011,
         MemberKind::Method,
         Type::Boolean,
         {{.name = u"CVWS", .type = Type::Object, .byReference = true}},
         on<CVLog>(openDb)},
        {u"CloseDB", 0x60030012, MemberKind::Method, Type::Nothing, {}, on<CVLog>([](CVLog& log, Arguments) {
             store::CloseDB(log.globals());
         })},
        nothing(u"ShowHelp", 0x60030017),
        nothing(u"PopupMenu", 0x60030018),
        {u"KeyDown",
         0x60030019,
         MemberKind::Method,
         Type::Nothing,
         {{.name = u"KeyCode", .type = Type::Int16, .byReference = true},
          {.name = u"Shift", .type = Type::Int16, .byReference = true}},
         on<CVLog>(keyDown)},
        {u"Font", kFontId, MemberKind::PropertyGet, Type::Object, {}, on<CVLog>([](CVLog& log, Arguments) {
             return ResourceFont(log.globals());
         })},
        {u"Font",
         kFontId,
         MemberKind::PropertyPut,
         Type::Nothing,
         {{u"Font", Type::Object}},
         on<CVLog>([](CVLog& log, Arguments a) {
             SetResourceFont(log.globals(), a[0].as<automation::ObjectRef>());
         })},
    };
    return table;
}

} // namespace cvlog::core
