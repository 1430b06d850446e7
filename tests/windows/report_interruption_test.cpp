// The sample report generator over a list without an end, broken off by its user in each way: by the button, by Esc
// wherever the focus is, and by the close box.

#include "tests/windows/com_test.h"
#include "tests/windows/form_window_fixture.h"
#include "tests/windows/invoke_call.h"
#include "tests/windows/real_input.h"
#include "tests/windows/report_class.h"
#include "tests/windows/script_host.h"

#include <filesystem>

namespace cvlog::tests {
namespace {

constexpr LONG kEndless = 300'000; // to be read to the end it takes many times as long as the user waits

HWND progressWindow() { return FindWindowW(L"TLReportProgress", nullptr); }

class ReportInterruption : public ComTest {
protected:
    /// A list with one column and so many rows; the user acts once, when the window of the generator is there.
    ComPtr<IDispatch> listOf(LONG count, std::function<void(HWND)> user) {
        auto* header = ScriptedDispatch::make();
        header->number(L"Width", 100).number(L"Position", 1).text(L"Text", L"Message");
        auto* headers = ScriptedDispatch::make();
        headers->number(L"Count", 1).object(L"Item", header);
        auto* cells = ScriptedDispatch::make();
        cells->number(L"Count", 0);
        auto* row = ScriptedDispatch::make();
        row->text(L"Text", L"message")
            .text(L"SmallIcon", L"Good")
            .text(L"Tag", L"")
            .object(L"ListSubItems", cells);
        row_ = com::adopt<IDispatch>(row);
        auto* rows = ScriptedDispatch::make();
        rows->number(L"Count", count);
        rows->member(L"Item",
                     [this, user = std::move(user)](ScriptedDispatch::Arguments&, VARIANT* result) mutable {
                         const HWND window = progressWindow();
                         if (user && window) std::exchange(user, nullptr)(window);
                         giveObject(result, row_.Get());
                         return S_OK;
                     });
        auto* list = ScriptedDispatch::make();
        list->object(L"ColumnHeaders", headers).object(L"ListItems", rows);
        return com::adopt<IDispatch>(list);
    }
    static Variant argument(IDispatch* object) {
        return made(VT_DISPATCH, [&](VARIANT& variant) {
            variant.pdispVal = object;
            if (object) object->AddRef();
        });
    }
    void isBrokenOffBy(std::function<void(HWND)> user) {
        const ComPtr<IDispatch> list = listOf(kEndless, std::move(user));
        const ComPtr<IDispatch> generator = create(L"Tabulite.TLReport");
        EXPECT_EQ(callByName(generator.Get(), L"CreateReport", DISPATCH_METHOD,
                             {argument(list.Get()), Variant(L"Log")}),
                  S_OK);
        Variant interrupted;
        EXPECT_EQ(callByName(generator.Get(), L"Interrupted", DISPATCH_PROPERTYGET, {}, &interrupted), S_OK);
        EXPECT_EQ(interrupted.boolVal, VARIANT_TRUE);
        EXPECT_EQ(progressWindow(), nullptr) << "it goes with the report";
        const std::wstring output = project_.path() + L"\\Output";
        EXPECT_EQ(
            callByName(generator.Get(), L"OutputDirectory", DISPATCH_PROPERTYPUT, {Variant(output.c_str())}),
            S_OK);
        EXPECT_NE(callByName(generator.Get(), L"DisplayReport", DISPATCH_METHOD, {argument(nullptr)}), S_OK);
        EXPECT_FALSE(std::filesystem::exists(output)) << "no page is left";
    }

    const ProjectFolder project_;
    ComPtr<IDispatch> row_;
};

TEST_F(ReportInterruption, ByTheButton) {
    const ReportClass sample;
    isBrokenOffBy([](HWND window) {
        const HWND button = FindWindowExW(window, nullptr, L"Button", nullptr);
        ASSERT_NE(button, nullptr);
        SendMessageW(button, BM_CLICK, 0, 0);
    });
}

TEST_F(ReportInterruption, ByTheCloseBox) {
    const ReportClass sample;
    isBrokenOffBy([](HWND window) { PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); });
}

TEST_F(ReportInterruption, ByEscWhereverTheFocusIs) {
    const ReportClass sample;
    const platform::win32::HostsWindow host;
    SetForegroundWindow(host);
    SetFocus(host);
    platform::win32::takeMessages();
    isBrokenOffBy([&](HWND) {
        EXPECT_EQ(GetFocus(), static_cast<HWND>(host)) << "the window comes up beside the user's work";
        typeKey(VK_ESCAPE);
    });
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE))
        << "the key was for the report, not for the window below";
}

TEST_F(ReportInterruption, EndsWithItsReport) {
    const ReportClass sample;
    const ComPtr<IDispatch> generator = create(L"Tabulite.TLReport");
    const auto interrupted = [&](IDispatch* list) {
        EXPECT_EQ(
            callByName(generator.Get(), L"CreateReport", DISPATCH_METHOD, {argument(list), Variant(L"Log")}),
            S_OK);
        Variant answer;
        EXPECT_EQ(callByName(generator.Get(), L"Interrupted", DISPATCH_PROPERTYGET, {}, &answer), S_OK);
        return answer.boolVal == VARIANT_TRUE;
    };
    EXPECT_TRUE(
        interrupted(listOf(kEndless, [](HWND window) { PostMessageW(window, WM_CLOSE, 0, 0); }).Get()));
    EXPECT_FALSE(interrupted(listOf(3, nullptr).Get()));
}

} // namespace
} // namespace cvlog::tests
