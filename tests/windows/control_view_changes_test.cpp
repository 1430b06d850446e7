// What a container that draws the control itself hears of its changes.

#include "tests/windows/control_view_fixture.h"
#include "tests/windows/view_sink.h"

#include <commctrl.h>

namespace cvlog::tests {
namespace {

bool timerCame = false;

void CALLBACK noteTimer(HWND, UINT, UINT_PTR, DWORD) { timerCame = true; }

class ControlViewChanges : public ControlViewTest {
protected:
    void TearDown() override {
        if (view_) view_->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
        EXPECT_EQ(sink_.references, 1U) << "a reference to the container's sink is left";
        ControlViewTest::TearDown();
    }
    /// Takes messages until a timer that was started afterwards, and for longer, has come: those before it came first.
    static void takeMessages() {
        timerCame = false;
        const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM * 3, noteTimer);
        MSG message;
        while (!timerCame && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
        KillTimer(nullptr, timer);
    }
    /// How often the sink is told of something, and that it is not told inside of it.
    int told(const std::function<void()>& something) {
        takeMessages();
        sink_.changes = 0;
        something();
        EXPECT_EQ(sink_.changes, 0) << "told in the midst of the change";
        takeMessages();
        return sink_.changes;
    }
    void listen(DWORD flags = 0) {
        EXPECT_EQ(view_->SetAdvise(DVASPECT_CONTENT, flags, &sink_), S_OK);
        takeMessages();
    }

    ViewSink sink_;
};

TEST_F(ControlViewChanges, EveryVisibleChangeIsToldFromTheMessageLoop) {
    listen();
    const auto put = [this](const wchar_t* name, const Variant& value) {
        return [this, name, value] { EXPECT_EQ(putMember(control_.Get(), name, value), S_OK); };
    };
    EXPECT_EQ(told(put(L"BackColor", Variant(0x102030))), 1);
    EXPECT_EQ(told(put(L"ForeColor", Variant(0x302010))), 1);
    EXPECT_EQ(told(put(L"Font", asVariant(makeSystemFont(L"Tahoma", 20).Get()))), 1);
    Variant no;
    no.vt = VT_BOOL;
    EXPECT_EQ(told(put(L"Enabled", no)), 1);
    EXPECT_EQ(told([this] { addRow(L"fourth"); }), 1);
    EXPECT_EQ(told([this] { callByName(items_.Get(), L"Clear", DISPATCH_METHOD, {}); }), 1);
    SIZEL extent = {5000, 4000};
    EXPECT_EQ(told([&] { object_->SetExtent(DVASPECT_CONTENT, &extent); }), 1);
    EXPECT_EQ(told([this] { numberMember(control_.Get(), L"BackColor"); }), 0);
}

TEST_F(ControlViewChanges, ManyChangesAreToldOnce) {
    listen();
    EXPECT_EQ(told([this] {
                  for (int i = 0; i < 50; ++i) addRow(L"one of many");
                  putMember(control_.Get(), L"BackColor", Variant(7));
              }),
              1);
}

TEST_F(ControlViewChanges, WhatTheUserDoesIsToldToo) {
    ASSERT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    listen();
    EXPECT_EQ(told([this] {
                  LVITEMW chosen{};
                  chosen.state = chosen.stateMask = LVIS_SELECTED;
                  SendMessageW(list(), LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&chosen));
              }),
              1);
    EXPECT_EQ(told([this] { SendMessageW(list(), LVM_SETCOLUMNWIDTH, 1, 33); }), 1);
    EXPECT_EQ(told([this] { SendMessageW(list(), WM_HSCROLL, SB_LINERIGHT, 0); }), 1);
}

TEST_F(ControlViewChanges, ASinkIsToldAtOnceOrOnceAsItWishes) {
    EXPECT_EQ(view_->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, &sink_), S_OK);
    EXPECT_EQ(sink_.changes, 1);
    EXPECT_EQ(told([this] { addRow(L"x"); }), 1);
    EXPECT_EQ(told([this] { addRow(L"x"); }), 1);

    listen(ADVF_ONLYONCE);
    EXPECT_EQ(told([this] { addRow(L"x"); }), 1);
    EXPECT_EQ(told([this] { addRow(L"x"); }), 0);
    EXPECT_EQ(sink_.references, 1U);

    sink_.changes = 0;
    EXPECT_EQ(view_->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE | ADVF_PRIMEFIRST, &sink_), S_OK);
    EXPECT_EQ(sink_.changes, 1);
    EXPECT_EQ(told([this] { addRow(L"x"); }), 0);
    ComPtr<IAdviseSink> left;
    DWORD flags = 99;
    EXPECT_EQ(view_->GetAdvise(nullptr, &flags, &left), S_OK);
    EXPECT_EQ(left.Get(), nullptr);
    EXPECT_EQ(flags, 0U);
}

TEST_F(ControlViewChanges, WhoKeepsThePictureAsDataIsToldAsWell) {
    const auto data = as<IDataObject>(IID_IDataObject);
    FORMATETC format{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
    DWORD connection = 0;
    ASSERT_EQ(data->DAdvise(&format, ADVF_NODATA, &sink_, &connection), S_OK);
    EXPECT_EQ(told([this] { addRow(L"x"); }), 0) << "the view is another matter";
    EXPECT_EQ(sink_.dataChanges, 1);
    EXPECT_EQ(data->DUnadvise(connection), S_OK);
    told([this] { addRow(L"x"); });
    EXPECT_EQ(sink_.dataChanges, 1);
}

TEST_F(ControlViewChanges, TheSinkOfTheLastCallIsTheOnlyOne) {
    listen();
    ViewSink second;
    EXPECT_EQ(view_->SetAdvise(DVASPECT_CONTENT, 0, &second), S_OK);
    EXPECT_EQ(sink_.references, 1U);
    ComPtr<IAdviseSink> known;
    DWORD aspects = 0;
    EXPECT_EQ(view_->GetAdvise(&aspects, nullptr, &known), S_OK);
    EXPECT_EQ(known.Get(), &second);
    EXPECT_EQ(aspects, static_cast<DWORD>(DVASPECT_CONTENT));
    known.Reset();
    EXPECT_EQ(told([this] { addRow(L"x"); }), 0);
    EXPECT_EQ(second.changes, 1);
    EXPECT_EQ(view_->SetAdvise(DVASPECT_ICON, 0, &sink_), DV_E_DVASPECT) << "no other aspect changes";
    EXPECT_EQ(told([this] {
                  addRow(L"x");
                  view_->SetAdvise(DVASPECT_CONTENT, 0, nullptr); // before it could be told
              }),
              0);
    EXPECT_EQ(second.changes, 1);
    EXPECT_EQ(second.references, 1U);
}

TEST_F(ControlViewChanges, ASinkMayLetGoOfTheControlAndMayDrawIt) {
    listen();
    addRow(L"x");
    sink_.handler = [this] {
        const HDC memory = CreateCompatibleDC(nullptr);
        const RECTL bounds{0, 0, 1, 1};
        EXPECT_EQ(view_->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, memory, &bounds, nullptr,
                              nullptr, 0),
                  S_OK);
        DeleteDC(memory);
        object_->SetClientSite(nullptr);
        inPlace_.Reset();
        object_.Reset();
        items_.Reset();
        view_.Reset();
        control_.Reset();
    };
    takeMessages();
    EXPECT_EQ(sink_.changes, 1);
    EXPECT_EQ(control_.Get(), nullptr);
    sink_.handler = nullptr;
}

} // namespace
} // namespace cvlog::tests
