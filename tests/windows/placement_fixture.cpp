#include "tests/windows/placement_fixture.h"

namespace cvlog::tests {

namespace {

struct Search {
    const std::wstring& title;
    HWND found;
};

BOOL CALLBACK compareTitle(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    wchar_t text[256] = L"";
    GetWindowTextW(window, text, 256);
    if (!IsWindowVisible(window) || search.title != text) return TRUE;
    search.found = window;
    return FALSE;
}

BOOL CALLBACK findList(HWND window, LPARAM found) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    if (std::wstring(name) != WC_LISTVIEWW) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

void PlacementTest::SetUp() {
    ComTest::SetUp();
    hostObjectsBefore_ = ScriptedDispatch::alive();
    library_.emplace();
    ASSERT_TRUE(library_->loaded());
    host_.emplace(project_.path());
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsPath().c_str());
    log_ = create(L"CVLog3.CVLog");
    ComPtr<IConnectionPointContainer> container;
    ASSERT_EQ(log_.As(&container), S_OK);
    ASSERT_EQ(container->FindConnectionPoint(com::kLogEvents, &point_), S_OK);
    DWORD cookie = 0;
    ASSERT_EQ(point_->Advise(&sink_, &cookie), S_OK);
    open();
    call(L"SeriesStart", {Variant(L"verify")}); // so that entries bring no box
    SetForegroundWindow(host_->handle());
    takeMessages();
}

void PlacementTest::TearDown() {
    if (log_) call(L"CloseDB");
    releaseLog();
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsPath().c_str());
    host_.reset();
    takeMessages();
    EXPECT_EQ(library_->canUnload(), S_OK);
    library_.reset();
    EXPECT_EQ(sink_.references, 1U) << "a reference to the host's sink is left";
    EXPECT_EQ(ScriptedDispatch::alive(), hostObjectsBefore_);
    ComTest::TearDown();
}

void PlacementTest::open() { ASSERT_TRUE(openDb(log_.Get(), host_->workspace())); }

void PlacementTest::releaseLog() {
    point_.Reset();
    log_.Reset();
}

Variant PlacementTest::objectArgument(IDispatch* object) {
    return made(VT_DISPATCH, [&](VARIANT& variant) {
        variant.pdispVal = object;
        if (object) object->AddRef();
    });
}

void PlacementTest::put(const wchar_t* property, bool value) {
    const Variant truth =
        made(VT_BOOL, [&](VARIANT& v) { v.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE; });
    EXPECT_EQ(callByName(log_.Get(), property, DISPATCH_PROPERTYPUT, {truth}), S_OK);
}

bool PlacementTest::is(const wchar_t* property) {
    Variant result;
    EXPECT_EQ(callByName(log_.Get(), property, DISPATCH_PROPERTYGET, {}, &result), S_OK);
    EXPECT_EQ(result.vt, VT_BOOL);
    return result.boolVal == VARIANT_TRUE;
}

void PlacementTest::putParent(IDispatch* parent, WORD flags) {
    EXPECT_EQ(callByName(log_.Get(), L"Parent", flags, {objectArgument(parent)}), S_OK);
}

void PlacementTest::call(const wchar_t* method, std::initializer_list<Variant> arguments) {
    EXPECT_EQ(callByName(log_.Get(), method, DISPATCH_METHOD, arguments), S_OK);
}

void PlacementTest::add() { call(L"Add", {Variant(L"verify"), Variant(1L), Variant(L"O1"), Variant(L"m")}); }

HWND PlacementTest::windowTitled(const std::wstring& title) {
    Search search{title, nullptr};
    EnumThreadWindows(GetCurrentThreadId(), compareTitle, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND PlacementTest::listIn(HWND window) {
    HWND found = nullptr;
    EnumChildWindows(window, findList, reinterpret_cast<LPARAM>(&found));
    return found;
}

// The wish is there from the start: nothing was stored that says otherwise.
void PlacementTest::docks() {
    putParent(host_->window());
    put(L"Docked", true);
    ASSERT_TRUE(host_->logView() && IsWindowVisible(host_->logView()->list()));
    takeMessages();
}

void PlacementTest::floats() {
    putParent(host_->window());
    takeMessages();
    ASSERT_NE(floating(), nullptr);
}

std::wstring PlacementTest::stored(const wchar_t* key) const {
    wchar_t text[64] = L"none";
    DWORD size = sizeof text;
    RegGetValueW(HKEY_CURRENT_USER, (settingsPath() + L"\\Activity Log").c_str(), key, RRF_RT_REG_SZ, nullptr,
                 text, &size);
    return text;
}

} // namespace cvlog::tests
