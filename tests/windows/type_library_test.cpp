// The embedded type library and the dispatch tables say the same, member by member; ids and GUIDs stay what they are.

#include "core/cv_log.h"
#include "tests/windows/com_test.h"
#include "view/log_control.h"

#include <ocidl.h>
#include <olectl.h>

#include <iterator>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

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
    case Type::Colour:
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

// The member of the table that was compared; null for none.
const Member* compareMember(ITypeInfo* info, const FUNCDESC& described,
                            const automation::DispatchTable& table) {
    BSTR name = nullptr;
    BSTR help = nullptr;
    info->GetDocumentation(described.memid, &name, &help, nullptr, nullptr);
    const std::wstring called = name ? name : L"";
    EXPECT_GT(SysStringLen(help), 0U) << "no help string";
    SysFreeString(name);
    SysFreeString(help);
    const Member* member = table.find(described.memid, kindOf(described.invkind));
    EXPECT_NE(member, nullptr) << std::string(called.begin(), called.end());
    if (!member) return nullptr;
    EXPECT_EQ(wide(member->name), called);
    const bool returns = described.invkind == INVOKE_PROPERTYGET || described.invkind == INVOKE_FUNC;
    EXPECT_EQ(returns ? plainType(described.elemdescFunc.tdesc) : static_cast<VARTYPE>(VT_VOID),
              variantType(member->result))
        << std::string(called.begin(), called.end());
    compareParameters(info, described, *member);
    return member;
}

void compareInterface(const GUID& id, const automation::DispatchTable& table) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(library()->GetTypeInfoOfGuid(id, &info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
    std::set<const Member*> own; // a put of the table stands for the puts by value and by reference
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* described = nullptr;
        ASSERT_EQ(info->GetFuncDesc(i, &described), S_OK);
        if (static_cast<DWORD>(described->memid) < 0x60000000 ||
            static_cast<DWORD>(described->memid) > 0x6000FFFF || table.has(described->memid)) {
            own.insert(compareMember(info.Get(), *described, table));
        }
        info->ReleaseFuncDesc(described);
    }
    info->ReleaseTypeAttr(attributes);
    EXPECT_EQ(own.size(), table.members().size())
        << "the table and the library have the same number of members";
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
        {u"PopupMenu", 0x60030018},    {u"KeyDown", 0x60030019},     {u"Font", 0x6803001a},
        {u"Parent", 0x68030006},       {u"Docked", 0x68030005},      {u"Visible", 0x68030000},
        {u"SetFocus", 0x6003000a},     {u"Dock", 0x6003000b},        {u"Move", 0x6003000f}};
    EXPECT_EQ(frozen.size(), 21U);
    for (const auto& [name, id] : frozen)
        EXPECT_EQ(core::CVLog::members().idOf(name), id) << std::string(name.begin(), name.end());
}

TEST(TypeLibrary, DispatchIdsOfTheControlAreFrozen) {
    const std::map<std::u16string_view, std::int32_t> frozen = {{u"BackColor", -501},
                                                                {u"ForeColor", -513},
                                                                {u"Enabled", -514},
                                                                {u"Font", -512},
                                                                {u"hwnd", -515},
                                                                {u"Refresh", -550},
                                                                {u"TextWidth", 0x60030001},
                                                                {u"Controls", 0x68030000},
                                                                {u"LogDblClick", 0x60030002}};
    for (const auto& [name, id] : frozen)
        EXPECT_EQ(view::LogControl::members().idOf(name), id) << std::string(name.begin(), name.end());
}

struct Event {
    DISPID id;
    const wchar_t* name;
    std::vector<std::pair<const wchar_t*, VARTYPE>> parameters; // with their types; VT_BYREF for a reference
};

void expectEvent(ITypeInfo* info, UINT index, const Event& expected) {
    FUNCDESC* described = nullptr;
    ASSERT_EQ(info->GetFuncDesc(index, &described), S_OK);
    EXPECT_EQ(described->memid, expected.id);
    EXPECT_EQ(described->invkind, INVOKE_FUNC);
    EXPECT_EQ(described->elemdescFunc.tdesc.vt, VT_VOID);
    BSTR names[4] = {};
    UINT count = 0;
    info->GetNames(described->memid, names, 4, &count);
    EXPECT_STREQ(names[0], expected.name);
    ASSERT_EQ(count, 1 + expected.parameters.size());
    ASSERT_EQ(static_cast<std::size_t>(described->cParams), expected.parameters.size());
    for (std::size_t i = 0; i < expected.parameters.size(); ++i) {
        const auto& [name, type] = expected.parameters[i];
        const TYPEDESC& actual = described->lprgelemdescParam[i].tdesc;
        EXPECT_STREQ(names[i + 1], name);
        EXPECT_EQ(actual.vt == VT_PTR ? actual.lptdesc->vt | VT_BYREF : actual.vt, type) << "parameter " << i;
    }
    for (BSTR name : names) SysFreeString(name);
    info->ReleaseFuncDesc(described);
}

TEST(TypeLibrary, EventsAreFrozenWithTheirIdsAndParameters) {
    const Event events[] = {{1, L"LogChanged", {}},
                            {2, L"GotFocus", {}},
                            {3, L"LostFocus", {}},
                            {4, L"ShowErrors", {{L"ObjectID", VT_BSTR}, {L"ErrorNum", VT_I4}}},
                            {5, L"Unload", {}},
                            {6, L"KeyDown", {{L"KeyCode", VT_I2 | VT_BYREF}, {L"Shift", VT_I2 | VT_BYREF}}}};
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(library()->GetTypeInfoOfGuid(com::kLogEvents, &info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    UINT own = 0;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* described = nullptr;
        ASSERT_EQ(info->GetFuncDesc(i, &described), S_OK);
        const bool isEvent = described->memid >= 1 && described->memid <= 6;
        info->ReleaseFuncDesc(described);
        if (isEvent) expectEvent(info.Get(), i, events[own++]);
    }
    EXPECT_EQ(own, std::size(events));
    info->ReleaseTypeAttr(attributes);
}

std::wstring helpOf(ITypeInfo* info, MEMBERID member) {
    BSTR help = nullptr;
    info->GetDocumentation(member, nullptr, &help, nullptr, nullptr);
    const std::wstring text = help ? help : L"";
    SysFreeString(help);
    return text;
}

void expectHelpEverywhere(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_FALSE(helpOf(info, MEMBERID_NIL).empty()) << "a type without a help string";
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* described = nullptr;
        ASSERT_EQ(info->GetFuncDesc(i, &described), S_OK);
        // The members of IDispatch itself come from another library.
        const bool inherited =
            attributes->wTypeFlags & TYPEFLAG_FDUAL || (described->wFuncFlags & FUNCFLAG_FRESTRICTED);
        if (!inherited) {
            EXPECT_FALSE(helpOf(info, described->memid).empty()) << "member " << described->memid;
        }
        info->ReleaseFuncDesc(described);
    }
    info->ReleaseTypeAttr(attributes);
}

TEST(TypeLibrary, EveryTypeAndEveryMemberHasAHelpString) {
    const ComPtr<ITypeLib> loaded = library();
    BSTR help = nullptr;
    EXPECT_EQ(loaded->GetDocumentation(-1, nullptr, &help, nullptr, nullptr), S_OK);
    EXPECT_STREQ(help, L"Activity Log 4.0 Component");
    SysFreeString(help);
    ASSERT_GE(loaded->GetTypeInfoCount(), 5U);
    for (UINT i = 0; i < loaded->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(loaded->GetTypeInfo(i, &info), S_OK);
        expectHelpEverywhere(info.Get());
    }
}

struct Part {
    const wchar_t* name;
    int flags; // IMPLTYPEFLAG_...
};

void expectClass(const GUID& id, const wchar_t* name, const std::vector<Part>& parts) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(library()->GetTypeInfoOfGuid(id, &info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE);
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FCONTROL) != 0, id == com::kControlClass);
    BSTR called = nullptr;
    EXPECT_EQ(info->GetDocumentation(MEMBERID_NIL, &called, nullptr, nullptr, nullptr), S_OK);
    EXPECT_STREQ(called, name);
    SysFreeString(called);
    ASSERT_EQ(attributes->cImplTypes, parts.size());
    for (UINT i = 0; i < parts.size(); ++i) {
        int flags = 0;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> part;
        EXPECT_EQ(info->GetImplTypeFlags(i, &flags), S_OK);
        EXPECT_EQ(flags, parts[i].flags);
        EXPECT_EQ(info->GetRefTypeOfImplType(i, &reference), S_OK);
        ASSERT_EQ(info->GetRefTypeInfo(reference, &part), S_OK);
        EXPECT_EQ(part->GetDocumentation(MEMBERID_NIL, &called, nullptr, nullptr, nullptr), S_OK);
        EXPECT_STREQ(called, parts[i].name);
        SysFreeString(called);
    }
    info->ReleaseTypeAttr(attributes);
}

TEST(TypeLibrary, TheClassesHaveTheirInterfacesAndEvents) {
    expectClass(
        com::kLogClass, L"CVLog",
        {{L"_CVLog", IMPLTYPEFLAG_FDEFAULT}, {L"__CVLog", IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE}});
    expectClass(com::kControlClass, L"CVLogControl", {{L"_CVLogControl", IMPLTYPEFLAG_FDEFAULT}});
}

// The interface that a parameter or a result points to, behind its other names.
GUID interfaceBehind(ITypeInfo* info, const TYPEDESC& type) {
    ComPtr<ITypeInfo> referred;
    if (type.vt == VT_PTR) return interfaceBehind(info, *type.lptdesc);
    if (type.vt != VT_USERDEFINED || FAILED(info->GetRefTypeInfo(type.hreftype, &referred))) return GUID_NULL;
    TYPEATTR* attributes = nullptr;
    if (FAILED(referred->GetTypeAttr(&attributes))) return GUID_NULL;
    const GUID id = attributes->typekind == TKIND_ALIAS
                        ? interfaceBehind(referred.Get(), attributes->tdescAlias)
                        : attributes->guid;
    referred->ReleaseTypeAttr(attributes);
    return id;
}

// Compilers of hosts take a font only by the interface that fonts have, by value or by reference.
void expectFontMembers(const GUID& interfaceId, MEMBERID member) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(library()->GetTypeInfoOfGuid(interfaceId, &info), S_OK);
    std::set<int> kinds;
    FUNCDESC* described = nullptr;
    for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &described)); ++i) {
        if (described->memid == member) {
            kinds.insert(described->invkind);
            const TYPEDESC& type = described->cParams == 1 ? described->lprgelemdescParam[0].tdesc
                                                           : described->elemdescFunc.tdesc;
            EXPECT_TRUE(interfaceBehind(info.Get(), type) == IID_IFontDisp) << described->invkind;
        }
        info->ReleaseFuncDesc(described);
    }
    EXPECT_EQ(kinds, (std::set<int>{INVOKE_PROPERTYGET, INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF}));
}

TEST(TypeLibrary, FontsAreFontsForEveryCompiler) {
    expectFontMembers(com::kLogInterface, 0x6803001a);
    expectFontMembers(com::kControlInterface, DISPID_FONT);
}

TEST(TypeLibrary, BorrowsWhatTheStandardLibraryHas) {
    // Two classes and three interfaces: a copy of the font's interface would be another type for compilers.
    EXPECT_EQ(library()->GetTypeInfoCount(), 5U);
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
