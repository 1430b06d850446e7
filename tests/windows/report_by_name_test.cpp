// The Report commands of the log and of its history, chosen in their menus, with the generator that is registered under
// its name: the sample one in its library, and one that notes what it is called with.

#include "tests/windows/log_user_fixture.h"
#include "tests/windows/report_class.h"
#include "tests/windows/report_rows.h"

namespace cvlog::tests {
namespace {

class ReportByName : public LogUserTest {
protected:
    void SetUp() override {
        LogUserTest::SetUp();
        floats();
    }
    void openNextSession() {
        call(L"CloseDB");
        open();
        call(L"SeriesStart", {Variant(L"verify")});
        floats();
    }
    std::wstring output() const { return project_.path() + L"\\Output"; }
};

using Rows = std::vector<std::string>;

TEST_F(ReportByName, OfTheLogSaysWhatItsListShows) {
    const ReportClass sample;
    add(0, L"first <i>& last</i>");
    add(1, L"second");
    add(2, L"third");
    reportLog();
    const std::string page = pageIn(output() + L"\\Log.html");
    EXPECT_NE(page.find("<h1>Activity Log</h1>"), std::string::npos);
    const Rows rows = rowsOfPage(page);
    ASSERT_EQ(rows.size(), 3U) << page;
    EXPECT_TRUE(rows[0].starts_with("good: Success|DATE|")) << rows[0];
    EXPECT_TRUE(rows[0].ends_with("|first &lt;i&gt;&amp; last&lt;/i&gt;")) << rows[0];
    EXPECT_TRUE(rows[1].starts_with("suspect: Warnings|DATE|")) << rows[1];
    EXPECT_TRUE(rows[1].ends_with("|second")) << rows[1];
    EXPECT_TRUE(rows[2].starts_with("bad: Errors|DATE|")) << rows[2];
    EXPECT_EQ(countsOfPage(page), "3 Entries, 1 Success, 1 Warnings, 1 Errors");
}

TEST_F(ReportByName, OfTheHistoryHasItsRecordsAndWhereTheSessionBegins) {
    const ReportClass sample;
    add(0, L"before");
    openNextSession();
    add(2, L"now \"&\"");
    reportHistory();
    const std::string page = pageIn(output() + L"\\LogHistory.html");
    EXPECT_NE(page.find("<h1>Activity Log History</h1>"), std::string::npos);
    const std::string text = "DATE Verify applied to Payroll (Program) - RC ";
    EXPECT_EQ(rowsOfPage(page), (Rows{"good: Success|" + text + "0. before", "section: Current session",
                                      "bad: Errors|" + text + "2. now &quot;&amp;&quot;"}));
    EXPECT_EQ(countsOfPage(page), "2 Entries, 1 Success, 1 Errors") << "where a session begins is no entry";
    EXPECT_EQ(pageIn(output() + L"\\Log.html"), "missing");
}

TEST_F(ReportByName, LeavesOutTheColumnsThatAreHidden) {
    const ReportClass sample;
    add(0, L"text");
    const HWND list = listIn(floating());
    for (int column = 0; column < 6; ++column)
        SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), 0);
    takeMessages();
    reportLog();
    const std::string page = pageIn(output() + L"\\Log.html");
    EXPECT_EQ(rowsOfPage(page), Rows{"good: Success|text"});
    EXPECT_NE(page.find("<th>Outcome</th><th>Message</th></tr>"), std::string::npos);
}

/// What a generator was called with.
struct Noted {
    std::vector<VARTYPE> types; // of CreateReport's arguments, in their order
    std::wstring name;
    std::vector<std::wstring> members;
    std::wstring directory;
    bool hourglass = false;
};

class NotedReport : public ReportByName {
protected:
    ComPtr<IDispatch> makeGenerator(bool interrupted) {
        ScriptedDispatch* generator = ScriptedDispatch::make();
        generator->raw(L"CreateReport", [this](DISPPARAMS& parameters) {
            noted_.members.push_back(L"CreateReport");
            for (UINT i = parameters.cArgs; i > 0; --i) noted_.types.push_back(parameters.rgvarg[i - 1].vt);
            if (parameters.cArgs == 2 && parameters.rgvarg[0].vt == (VT_BYREF | VT_BSTR))
                noted_.name = *parameters.rgvarg[0].pbstrVal;
            const HWND list = history() ? listIn(history()) : listIn(floating());
            noted_.hourglass = pointerOver(list) == LoadCursorW(nullptr, IDC_WAIT);
            return S_OK;
        });
        generator->member(L"Interrupted", [this, interrupted](ScriptedDispatch::Arguments&, VARIANT* result) {
            noted_.members.push_back(L"Interrupted");
            result->vt = VT_BOOL;
            result->boolVal = interrupted ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        });
        generator->member(L"OutputDirectory", [this](ScriptedDispatch::Arguments& arguments, VARIANT*) {
            noted_.members.push_back(L"OutputDirectory");
            noted_.directory = arguments.at(0).bstrVal;
            return S_OK;
        });
        generator->member(L"DisplayReport", [this](ScriptedDispatch::Arguments& arguments, VARIANT*) {
            noted_.members.push_back(L"DisplayReport");
            ownerIsTheHosts_ = arguments.at(0).vt == VT_DISPATCH && arguments[0].pdispVal == host_->window();
            return S_OK;
        });
        return com::adopt<IDispatch>(generator);
    }
    static HCURSOR pointerOver(HWND list) {
        SendMessageW(list, WM_SETCURSOR, reinterpret_cast<WPARAM>(list), MAKELONG(HTCLIENT, WM_MOUSEMOVE));
        return GetCursor();
    }

    Noted noted_;
    bool ownerIsTheHosts_ = false;
};

TEST_F(NotedReport, IsCreatedByReferenceAndShownInFrontOfTheHost) {
    const ReportClass noting([this] { return makeGenerator(false); });
    add(0, L"text");
    reportLog();
    EXPECT_EQ(noted_.types, (std::vector<VARTYPE>{VT_BYREF | VT_DISPATCH, VT_BYREF | VT_BSTR}));
    EXPECT_EQ(noted_.name, L"Log");
    EXPECT_EQ(noted_.members, (std::vector<std::wstring>{L"CreateReport", L"Interrupted", L"OutputDirectory",
                                                         L"DisplayReport"}));
    EXPECT_EQ(noted_.directory, output());
    EXPECT_TRUE(ownerIsTheHosts_);
    EXPECT_TRUE(noted_.hourglass);
    EXPECT_NE(pointerOver(listIn(floating())), LoadCursorW(nullptr, IDC_WAIT));
}

TEST_F(NotedReport, OfTheHistoryThatIsBrokenOffIsNeitherWrittenNorShown) {
    const ReportClass noting([this] { return makeGenerator(true); });
    add(0, L"text");
    reportHistory();
    EXPECT_EQ(noted_.name, L"LogHistory");
    EXPECT_EQ(noted_.members, (std::vector<std::wstring>{L"CreateReport", L"Interrupted"}));
    EXPECT_TRUE(noted_.hourglass);
}

} // namespace
} // namespace cvlog::tests
