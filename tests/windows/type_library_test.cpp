// The embedded type library and the dispatch tables say the same, member by member; ids and GUIDs stay what they are.

#include "core/cv_log.h"
#include "tests/windows/com_test.h"
#include "view/log_control.h"

#include <map>

namespace cvlog::tests {
namespace {

using automation::Member;
using automation::MemberKind;
using automation::Type;

std::wstring wide(std::u16string_view text) { return {text.begin(), text.end()}; }

ComPtr<ITypeLib> library() {
    ComPtr<ITypeLib> loaded;
    EXPECT_EQ(LoadTypeLibEx((binFolder() + L"\\CVLog3.dll").c_str(), REGKIND_NONE, &loaded), S_OK);
    return loaded;
}

MemberKind kindOf(INVOKEKIND kind) {
    if (kind == INVOKE_PROPERTYGET) return MemberKind::PropertyGet;
    return kind == INVOKE_FUNC ? MemberKind::Method : MemberKind::PropertyPut;
}

VARTYPE variantType(Type type) {
    switch (type) {
    case Type::Boolean:
        return VT_BOOL;
    case Type::Int16:
        return VT_I2;
    case Type::Int32:
        return VT_I4;
    case Type::Single:
        return VT_R4;
    case Type::Double:
        return VT_R8;
    case Type::Text:
        return VT_BSTR;
    case Type::Object:
        return VT_DISPATCH;
    case Type::Nothing:
        return VT_VOID;
    case Type::Any:
        return VT_VARIANT;
    }
    return VT_EMPTY;
}

// The plain type behind a description: a reference is what it refers to.
VARTYPE plainType(const TYPEDESC& type) {
    constexpr VARTYPE kColour = VT_UI4; // 32 bits, as the number it is passed as
    constexpr VARTYPE kObject = VT_DISPATCH;
    constexpr VARTYPE kNumber = VT_I4;
    if (type.vt == VT_PTR) return type.lptdesc->vt == VT_USERDEFINED ? kObject : plainType(*type.lptdesc);
    return type.vt == kColour ? kNumber : type.vt;
}

void compareParameters(ITypeInfo* info, const FUNCDESC& described, const Member& member) {
    ASSERT_EQ(static_cast<std::size_t>(described.cParams), member.parameters.size());
    BSTR names[16] = {};
    UINT count = 0;
    info->GetNames(described.memid, names, 16, &count);
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        const automation::Parameter& parameter = member.parameters[i];
        const ELEMDESC& element = described.lprgelemdescParam[i];
        if (i + 1 < count) {
            EXPECT_EQ(wide(parameter.name), names[i + 1]);
        }
        EXPECT_EQ(plainType(element.tdesc), variantType(parameter.type)) << "parameter " << i;
        EXPECT_EQ((element.paramdesc.wParamFlags & PARAMFLAG_FOUT) != 0, parameter.byReference)
            << "parameter " << i;
        EXPECT_EQ((element.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0, parameter.optional)
            << "parameter " << i;
    }
    for (BSTR name : names) SysFreeString(name);
}

void compareMember(ITypeInfo* info, const FUNCDESC& described, const automation::DispatchTable& table) {
    BSTR name = nullptr;
    BSTR help = nullptr;
    info->GetDocumentation(described.memid, &name, &help, nullptr, nullptr);
    const std::wstring called = name ? name : L"";
    EXPECT_GT(SysStringLen(help), 0U) << "no help string";
    SysFreeString(name);
    SysFreeString(help);
    const Member* member = table.find(described.memid, kindOf(described.invkind));
    ASSERT_NE(member, nullptr) << std::string(called.begin(), called.end());
    EXPECT_EQ(wide(member->name), called);
    const bool returns = described.invkind == INVOKE_PROPERTYGET || described.invkind == INVOKE_FUNC;
    EXPECT_EQ(returns ? plainType(described.elemdescFunc.tdesc) : static_cast<VARTYPE>(VT_VOID),
              variantType(member->result))
        << std::string(called.begin(), called.end());
    compareParameters(info, described, *member);
}

void compareInterface(const GUID& id, const automation::DispatchTable& table) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(library()->GetTypeInfoOfGuid(id, &info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
    std::size_t own = 0;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* described = nullptr;
        ASSERT_EQ(info->GetFuncDesc(i, &described), S_OK);
        if (static_cast<DWORD>(described->memid) < 0x60000000 ||
            static_cast<DWORD>(described->memid) > 0x6000FFFF || table.has(described->memid)) {
            compareMember(info.Get(), *described, table);
            ++own;
        }
        info->ReleaseFuncDesc(described);
    }
    info->ReleaseTypeAttr(attributes);
    EXPECT_EQ(own, table.members().size()) << "the table and the library have the same number of members";
}

TEST(TypeLibrary, TheLogAgreesWithItsDispatchTable) {
    compareInterface(com::kLogInterface, core::CVLog::members());
}

TEST(TypeLibrary, TheControlAgreesWithItsDispatchTable) {
    compareInterface(com::kControlInterface, view::LogControl::members());
}

TEST(TypeLibrary, DispatchIdsOfTheLogAreFrozen) {
    const std::map<std::u16string_view, std::int32_t> frozen = {
        {u"Display", 0x60030008},      {u"LogDB", 0x68030007},       {u"Left", 0x68030004},
        {u"Top", 0x68030003},          {u"Height", 0x68030002},      {u"Width", 0x68030001},
        {u"SeriesFinish", 0x6003000c}, {u"SeriesStart", 0x6003000d}, {u"Add", 0x6003000e},
        {u"OpenDB", 0x60030011},       {u"CloseDB", 0x60030012},     {u"ShowHelp", 0x60030017},
        {u"PopupMenu", 0x60030018},    {u"KeyDown", 0x60030019}};
    for (const auto& [name, id] : frozen)
        EXPECT_EQ(core::CVLog::members().idOf(name), id) << std::string(name.begin(), name.end());
}

TEST(TypeLibrary, GuidsAndVersionAreFrozen) {
    TLIBATTR* attributes = nullptr;
    const ComPtr<ITypeLib> loaded = library();
    ASSERT_EQ(loaded->GetLibAttr(&attributes), S_OK);
    wchar_t id[39];
    StringFromGUID2(attributes->guid, id, 39);
    EXPECT_STREQ(id, L"{FA7F8F1A-51A3-430D-A1FD-740F1850F703}");
    EXPECT_EQ(attributes->wMajorVerNum, 4);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    loaded->ReleaseTLibAttr(attributes);
    const std::pair<const GUID*, const wchar_t*> classes[] = {
        {&com::kLogClass, L"{67CA517D-7E04-482C-9AC6-B7F007E9D655}"},
        {&com::kControlClass, L"{F37815D9-C219-463C-97BD-DD8CC001F013}"},
        {&com::kLogInterface, L"{395572EE-E308-4010-8BEF-5CCE8D59BBCE}"},
        {&com::kLogEvents, L"{8C418AE9-D9C0-41C6-9C63-24D190B4E58E}"},
        {&com::kControlInterface, L"{90A8FF87-7AC3-4903-A9B2-A76F7A3B167C}"}};
    for (const auto& [guid, text] : classes) {
        StringFromGUID2(*guid, id, 39);
        EXPECT_STREQ(id, text);
        ComPtr<ITypeInfo> info;
        EXPECT_EQ(loaded->GetTypeInfoOfGuid(*guid, &info), S_OK) << "not in the library";
    }
}

} // namespace
} // namespace cvlog::tests
