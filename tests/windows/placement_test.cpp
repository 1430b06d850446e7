// Where the log shows, through COM and in real windows.

#include "tests/windows/placement_fixture.h"

namespace cvlog::tests {
namespace {

class Placement : public PlacementTest {};

/// One more interface pointer of an object: another address, the same identity.
class OtherFace final : public IDispatch {
public:
    explicit OtherFace(IDispatch* object) : object_(object) {}
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (id != IID_IDispatch) return object_->QueryInterface(id, result);
        return AddRef(), *result = this, S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; } // it lives on the stack
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return object_->GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return object_->GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return object_->GetIDsOfNames(id, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* info, UINT* bad) override {
        return object_->Invoke(id, iid, locale, flags, parameters, result, info, bad);
    }

    ULONG references = 1;

private:
    IDispatch* object_;
};

TEST_F(Placement, IsNotTouchedByOpeningTheDatabase) {
    EXPECT_EQ(host_->layouts, 0);
    EXPECT_EQ(floating(), nullptr);
    EXPECT_FALSE(is(L"Visible"));
    EXPECT_FALSE(is(L"Docked"));
}

TEST_F(Placement, FollowsVisible) {
    put(L"Visible", false); // as it is
    EXPECT_EQ(host_->layouts, 0);
    put(L"Visible", true);
    const HWND window = floating();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(is(L"Visible"));
    EXPECT_EQ(host_->layouts, 1);
    put(L"Visible", true);
    EXPECT_EQ(host_->layouts, 1);
    EXPECT_EQ(floating(), window);
    put(L"Visible", false);
    EXPECT_EQ(floating(), nullptr);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(is(L"Visible"));
}

TEST_F(Placement, FloatsInFrontOfTheHostsWindow) {
    put(L"Visible", true);
    EXPECT_EQ(GetWindow(floating(), GW_OWNER), host_->handle());
}

TEST_F(Placement, FloatsOfNoneWhenTheHostsHandleIsNoWindows) {
    for (const LONG handle : {0x12345678L, -1L, 0L}) {
        host_->toldHandle = handle;
        put(L"Visible", true);
        ASSERT_NE(floating(), nullptr) << handle;
        EXPECT_EQ(GetWindow(floating(), GW_OWNER), nullptr);
        put(L"Visible", false);
    }
}

TEST_F(Placement, ComesBackToTheScreenAfterTheHostHasHiddenItsWindow) {
    floats();
    const HWND window = floating();
    ShowWindow(window, SW_HIDE);
    ASSERT_EQ(floating(), nullptr);
    put(L"Docked", true);
    put(L"Docked", false);
    ASSERT_NE(floating(), nullptr);
    ShowWindow(floating(), SW_HIDE);
    putParent(host_->options().members());
    EXPECT_NE(floating(), nullptr);
}

TEST_F(Placement, ShowsTheSameRowsFloatingAndDocked) {
    add();
    floats();
    const HWND list = listIn(floating());
    ASSERT_NE(list, nullptr);
    add();
    EXPECT_EQ(rowsOf(host_->logView()->list()), rowsOf(list));
    EXPECT_EQ(rowsOf(list), 1) << "what came before there was a list is in the database alone";
    put(L"Docked", true);
    add();
    put(L"Docked", false);
    EXPECT_EQ(rowsOf(listIn(floating())), 2);
    EXPECT_EQ(rowsOf(host_->logView()->list()), 2);
}

TEST_F(Placement, TakesAParentByEitherKindOfPut) {
    for (const WORD flags : {WORD{DISPATCH_PROPERTYPUTREF}, WORD{DISPATCH_PROPERTYPUT}}) {
        const int before = host_->layouts;
        putParent(host_->window(), flags);
        EXPECT_EQ(host_->layouts, before + 1);
        Variant parent;
        EXPECT_EQ(callByName(log_.Get(), L"Parent", DISPATCH_PROPERTYGET, {}, &parent), S_OK);
        ASSERT_EQ(parent.vt, VT_DISPATCH);
        EXPECT_EQ(parent.pdispVal, host_->window());
        EXPECT_TRUE(is(L"Visible")) << "wanted from the start";
        putParent(nullptr, flags);
        EXPECT_EQ(floating(), nullptr);
        EXPECT_FALSE(is(L"Visible"));
    }
    EXPECT_EQ(host_->added, std::vector<std::wstring>{L"LogView"}) << "once";
}

TEST_F(Placement, StaysForTheSameParentWhateverPointerNamesIt) {
    putParent(host_->window());
    const int before = host_->layouts;
    putParent(host_->window());
    OtherFace other(host_->window());
    putParent(&other);
    EXPECT_EQ(host_->layouts, before);
    EXPECT_EQ(other.references, 1U) << "the one that is there is kept";
    putParent(host_->options().members());
    EXPECT_EQ(host_->layouts, before + 1);
}

TEST_F(Placement, FollowsDocked) {
    put(L"Docked", true); // without a container
    EXPECT_EQ(host_->layouts, 0);
    EXPECT_EQ(host_->options().saves, 0);
    floats();
    put(L"Docked", true);
    EXPECT_EQ(floating(), nullptr);
    EXPECT_TRUE(is(L"Docked"));
    EXPECT_TRUE(IsWindowVisible(host_->logView()->list()));
    EXPECT_EQ(host_->options().docked, L"true");
    put(L"Docked", false);
    EXPECT_NE(floating(), nullptr);
    EXPECT_FALSE(IsWindowVisible(host_->logView()->list()));
    EXPECT_EQ(host_->options().docked, L"false");
    EXPECT_EQ(host_->options().saves, 2);
    takeMessages();
    EXPECT_EQ(host_->layouts, 3) << "its own saves are no news";
}

TEST_F(Placement, HidesADockedLogAndShowsItAgain) {
    docks();
    put(L"Visible", false);
    EXPECT_FALSE(IsWindowVisible(host_->logView()->list()));
    EXPECT_EQ(floating(), nullptr);
    put(L"Visible", true);
    EXPECT_TRUE(IsWindowVisible(host_->logView()->list()));
}

TEST_F(Placement, MovesTheHostsWindowByFourDoublesByReference) {
    for (int i = 0; i < 2; ++i) { // what the host writes into them does no harm
        call(L"Move", {ofDouble(1.5), ofDouble(-2), ofDouble(3e6), Variant(4L)});
        ASSERT_EQ(host_->moves.size(), static_cast<std::size_t>(i) + 1);
        const auto& moved = host_->moves.back();
        for (const VARTYPE type : moved.types) EXPECT_EQ(type, VT_BYREF | VT_R8);
        EXPECT_EQ(moved.values, (std::array<double, 4>{1.5, -2, 3e6, 4}));
    }
}

TEST_F(Placement, LeavesTheVariablesOfItsCallersMoveAlone) {
    double left = 7;
    const auto outcome = InvokeCall{
        0x6003000f,
        DISPATCH_METHOD,
        {byReference(VT_R8, &left), ofDouble(0), ofDouble(1), ofDouble(1)},
        {}}.on(log_.Get());
    EXPECT_EQ(outcome.result, S_OK);
    EXPECT_EQ(host_->moves.size(), 1U);
    EXPECT_EQ(left, 7);
}

TEST_F(Placement, GivesADockedLogTheFocusAndTellsOfIt) {
    docks();
    sink_.ids.clear();
    call(L"SetFocus");
    EXPECT_EQ(GetFocus(), host_->logView()->list());
    EXPECT_EQ(sink_.ids, (std::vector<DISPID>{kGotFocus, kGotFocus})) << "the call, then the control";
    SetFocus(host_->handle());
    EXPECT_EQ(sink_.ids.back(), kLostFocus);
}

TEST_F(Placement, GivesAFloatingLogTheFocusAndTellsOfIt) {
    floats();
    SetForegroundWindow(host_->handle());
    SetFocus(host_->handle());
    takeMessages();
    sink_.ids.clear();
    call(L"SetFocus");
    EXPECT_TRUE(takeMessagesUntil([&] { return GetFocus() == listIn(floating()); }));
    EXPECT_EQ(sink_.ids, std::vector<DISPID>{kGotFocus}) << "the control alone";
    SetActiveWindow(host_->handle());
    EXPECT_EQ(sink_.ids.back(), kLostFocus);
}

TEST_F(Placement, GivesNoFocusToALogThatIsNotWanted) {
    docks();
    put(L"Visible", false);
    SetFocus(host_->handle());
    sink_.ids.clear();
    call(L"SetFocus");
    EXPECT_EQ(GetFocus(), host_->handle());
    EXPECT_TRUE(sink_.ids.empty());
}

} // namespace
} // namespace cvlog::tests
