// Hosts do what they like when an event reaches them, also what ends the log or its lists under the entry that is being
// added.

#include "tests/windows/counting_sink.h"
#include "tests/windows/invoke_call.h"
#include "tests/windows/loaded_library.h"
#include "tests/windows/script_host.h"

#include <ocidl.h>

#include <commctrl.h>

namespace cvlog::tests {
namespace {

class EventHandlers : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        before_ = ScriptedDispatch::alive();
        log_ = create(L"CVLog3.CVLog");
        workspace_ = com::adopt<IDispatch>(makeWorkspace(project_.path()));
        ASSERT_TRUE(openDb(log_.Get(), workspace_.Get()));
        for (ComPtr<IDispatch>& control : controls_) control = create(L"CVLog3.CVLogControl");
        startSeries(); // no boxes
        ASSERT_EQ(advise(sink_), 1U);
    }
    void TearDown() override {
        sink_.handler = other_.handler = nullptr;
        releaseAll();
        workspace_.Reset();
        EXPECT_EQ(ScriptedDispatch::alive(), before_) << "a host object is left";
        EXPECT_EQ(sink_.references, 1U);
        EXPECT_EQ(other_.references, 1U);
        ComTest::TearDown();
    }
    DWORD advise(CountingSink& sink) {
        ComPtr<IConnectionPointContainer> container;
        DWORD cookie = 0;
        EXPECT_EQ(log_.As(&container), S_OK);
        EXPECT_EQ(container->FindConnectionPoint(com::kLogEvents, &point_), S_OK);
        EXPECT_EQ(point_->Advise(&sink, &cookie), S_OK);
        return cookie;
    }
    void releaseAll() {
        point_.Reset();
        for (ComPtr<IDispatch>& control : controls_) control.Reset();
        log_.Reset();
    }
    void startSeries() {
        EXPECT_EQ(callByName(log_.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}), S_OK);
    }
    void closeDb() { EXPECT_EQ(callByName(log_.Get(), L"CloseDB", DISPATCH_METHOD, {}), S_OK); }
    /// Adds an entry about an object through a pointer that holds no reference, as far as that is possible.
    HRESULT add(const wchar_t* object = L"O1") {
        IDispatch* log = log_.Get();
        return InvokeCall{
            kAdd, DISPATCH_METHOD, {Variant(L"verify"), Variant(0L), Variant(object), Variant(L"m")}, {}}
            .on(log)
            .result;
    }
    HWND list(std::size_t control) {
        Variant handle;
        EXPECT_EQ(callByName(controls_[control].Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &handle), S_OK);
        return reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.lVal));
    }
    LRESULT rows(std::size_t control) { return SendMessageW(list(control), LVM_GETITEMCOUNT, 0, 0); }
    void expectRows(LRESULT count) {
        EXPECT_EQ(rows(0), count);
        EXPECT_EQ(rows(1), count) << "all lists hold the same rows";
    }

    int before_ = 0;
    ProjectFolder project_;
    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> workspace_;
    ComPtr<IDispatch> controls_[2];
    ComPtr<IConnectionPoint> point_;
    CountingSink sink_;
    CountingSink other_;
};

TEST_F(EventHandlers, ThatFailOrDisconnectEachOtherStopNothing) {
    const DWORD second = advise(other_);
    for (const HRESULT failure : {E_FAIL, DISP_E_EXCEPTION, RPC_E_DISCONNECTED}) {
        sink_.answer = failure;
        EXPECT_EQ(add(), S_OK);
    }
    EXPECT_EQ(other_.ids.size(), 3U) << "a failing sink does not keep the next one from hearing";
    sink_.handler = [&] { EXPECT_EQ(point_->Unadvise(second), S_OK); };
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(other_.ids.size(), 3U) << "disconnected before its turn";
    expectRows(4);
}

TEST_F(EventHandlers, MayConnectAnotherSinkThatHearsTheNextEvent) {
    sink_.handler = [this] {
        sink_.handler = nullptr;
        advise(other_);
    };
    EXPECT_EQ(add(), S_OK);
    EXPECT_TRUE(other_.ids.empty());
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(other_.ids.size(), 1U);
}

TEST_F(EventHandlers, MayAddThreeLevelsDeep) {
    int depth = 0;
    sink_.handler = [&] {
        if (++depth <= 3) {
            EXPECT_EQ(add(), S_OK);
        }
    };
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(sink_.ids.size(), 4U);
    expectRows(4);
}

TEST_F(EventHandlers, MayCloseTheDatabase) {
    EXPECT_EQ(add(), S_OK);
    expectRows(1);
    sink_.handler = [this] { closeDb(); };
    EXPECT_EQ(add(), S_OK) << "the host had answered before the event";
    expectRows(1); // closing has emptied the lists, then the row came
    EXPECT_EQ(add(), DISP_E_EXCEPTION) << "an object needs a repository";
    EXPECT_EQ(sink_.ids.size(), 2U) << "and is missed before anything is written or told";
    EXPECT_EQ(add(L""), S_OK);
    expectRows(2);
}

TEST_F(EventHandlers, MayStartASeries) {
    sink_.handler = [this] { startSeries(); };
    EXPECT_EQ(add(), S_OK);
    expectRows(1);
    EXPECT_EQ(add(), S_OK);
    expectRows(1); // a new series empties the lists
}

TEST_F(EventHandlers, MayDestroyTheFirstControl) {
    EXPECT_EQ(add(), S_OK);
    const HWND first = list(0);
    sink_.handler = [this] { controls_[0].Reset(); };
    EXPECT_EQ(add(), S_OK);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(rows(1), 2);
}

TEST_F(EventHandlers, MayDestroyAllControlsAndMakeNewOnes) {
    sink_.handler = [this] {
        for (ComPtr<IDispatch>& control : controls_) control.Reset();
    };
    EXPECT_EQ(add(), S_OK);
    sink_.handler = [this] {
        for (ComPtr<IDispatch>& control : controls_) control = create(L"CVLog3.CVLogControl");
    };
    EXPECT_EQ(add(), S_OK);
    expectRows(1);
}

TEST_F(EventHandlers, MayLetGoOfEverythingWhileAnEntryIsAdded) {
    const HWND first = list(0);
    sink_.handler = [this] { releaseAll(); };
    const HRESULT result = add();
    EXPECT_TRUE(result == S_OK || result == DISP_E_EXCEPTION) << result;
    EXPECT_EQ(sink_.ids, std::vector<DISPID>{1});
    EXPECT_FALSE(IsWindow(first));
}

TEST_F(EventHandlers, MayLetGoOfEverythingWhenAListGetsTheFocus) {
    const HWND first = list(0);
    sink_.handler = [this] { releaseAll(); };
    SendMessageW(first, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(sink_.ids, std::vector<DISPID>{2});
    EXPECT_FALSE(IsWindow(first)) << "nobody is left to destroy it later";
}

TEST_F(EventHandlers, MayLetTheLibraryGoWhenAListGetsTheFocus) {
    const HWND first = list(0);
    HRESULT unloadable = S_OK;
    const LoadedLibrary library;
    sink_.handler = [&] {
        releaseAll();
        unloadable = library.canUnload();
    };
    SendMessageW(first, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(unloadable, S_FALSE) << "the message is still under way in the library";
    EXPECT_EQ(library.canUnload(), S_OK);
}

TEST_F(EventHandlers, MayDestroyTheControlWhoseListGetsTheFocus) {
    const HWND first = list(0);
    sink_.handler = [this] { controls_[0].Reset(); };
    SendMessageW(first, WM_SETFOCUS, 0, 0);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(rows(1), 1);
}

} // namespace
} // namespace cvlog::tests
