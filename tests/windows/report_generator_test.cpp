// The sample report generator over the list of a real log control: what its page says, and where it goes.

#include "tests/windows/invoke_call.h"
#include "tests/windows/report_class.h"
#include "tests/windows/report_rows.h"
#include "tests/windows/script_host.h"

#include <cwchar>
#include <filesystem>

namespace cvlog::tests {
namespace {

constexpr GUID kReportClass = {0x4e0d7a52, 0x8c1b, 0x4f3a, {0x9d, 0x6e, 0x51, 0xc2, 0xb7, 0xf0, 0xa9, 0x38}};

class ReportGenerator : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        SetEnvironmentVariableW(kUnattended, L"1");
        library_ = LoadLibraryW((binFolder() + L"\\TLReport.dll").c_str());
        ASSERT_NE(library_, nullptr);
        log_ = create(L"CVLog3.CVLog");
        workspace_ = com::adopt<IDispatch>(makeWorkspace(project_.path()));
        ASSERT_TRUE(openDb(log_.Get(), workspace_.Get()));
        control_ = create(L"CVLog3.CVLogControl");
        call(log_.Get(), L"SeriesStart", {Variant(L"verify")});
        list_ = object(control_.Get(), L"Controls", {Variant(L"lvLog")});
        generator_ = makeGenerator();
    }
    void TearDown() override {
        generator_.Reset();
        list_.Reset();
        control_.Reset();
        if (log_) call(log_.Get(), L"CloseDB");
        log_.Reset();
        workspace_.Reset();
        if (library_) FreeLibrary(library_);
        SetEnvironmentVariableW(kUnattended, nullptr);
        ComTest::TearDown();
    }

    ComPtr<IDispatch> makeGenerator() const {
        using GetClass = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
        const auto getClass = reinterpret_cast<GetClass>(
            reinterpret_cast<void*>(GetProcAddress(library_, "DllGetClassObject")));
        ComPtr<IClassFactory> factory;
        EXPECT_EQ(getClass(kReportClass, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
                  S_OK);
        ComPtr<IDispatch> made;
        EXPECT_EQ(
            factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(made.GetAddressOf())),
            S_OK);
        return made;
    }
    static Variant call(IDispatch* owner, const wchar_t* name,
                        std::initializer_list<Variant> arguments = {}) {
        Variant result;
        EXPECT_EQ(callByName(owner, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, &result), S_OK);
        return result;
    }
    static ComPtr<IDispatch> object(IDispatch* owner, const wchar_t* name,
                                    std::initializer_list<Variant> arguments = {}) {
        const Variant result = call(owner, name, arguments);
        EXPECT_EQ(result.vt, VT_DISPATCH);
        return result.vt == VT_DISPATCH ? ComPtr<IDispatch>(result.pdispVal) : nullptr;
    }
    static Variant argument(IDispatch* object) {
        Variant value;
        value.vt = VT_DISPATCH;
        value.pdispVal = object;
        if (object) object->AddRef();
        return value;
    }
    void add(LONG code, const wchar_t* message) {
        call(log_.Get(), L"Add", {Variant(L"verify"), Variant(code), Variant(L"O1"), Variant(message)});
    }
    /// The page that the report of the list under this name becomes.
    std::string report(const wchar_t* name) {
        call(generator_.Get(), L"CreateReport", {argument(list_.Get()), Variant(name)});
        return display(name);
    }
    std::string display(const std::wstring& name) {
        const std::wstring output = project_.path() + L"\\Output";
        EXPECT_EQ(call(generator_.Get(), L"Interrupted").boolVal, VARIANT_FALSE);
        EXPECT_EQ(
            callByName(generator_.Get(), L"OutputDirectory", DISPATCH_PROPERTYPUT, {Variant(output.c_str())}),
            S_OK);
        call(generator_.Get(), L"DisplayReport", {argument(nullptr)});
        return pageIn(output + L"\\" + name + L".html");
    }
    /// CreateReport with arguments that refer to the test's variables.
    HRESULT reference(const VARIANT& list, const VARIANT& name) const {
        DISPID id = DISPID_UNKNOWN;
        OLECHAR member[] = L"CreateReport";
        OLECHAR* names = member;
        EXPECT_EQ(generator_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
        VARIANT arguments[] = {name, list};
        DISPPARAMS parameters = {arguments, nullptr, 2, 0};
        return generator_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                                  nullptr, nullptr);
    }
    void showMessagesAlone() {
        const ComPtr<IDispatch> headers = object(list_.Get(), L"ColumnHeaders");
        for (LONG i = 1; i <= call(headers.Get(), L"Count").lVal; ++i) {
            const ComPtr<IDispatch> header = object(headers.Get(), L"Item", {Variant(i)});
            if (std::wcscmp(call(header.Get(), L"Key").bstrVal, L"Message") != 0)
                callByName(header.Get(), L"Width", DISPATCH_PROPERTYPUT, {Variant(0L)});
        }
    }
    static bool has(const std::string& page, const std::string& text) {
        return page.find(text) != std::string::npos;
    }

    ProjectFolder project_;
    HMODULE library_ = nullptr;
    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> workspace_;
    ComPtr<IDispatch> control_;
    ComPtr<IDispatch> list_;
    ComPtr<IDispatch> generator_;
};

TEST_F(ReportGenerator, SaysWhatTheListShowsInWords) {
    add(0, L"first");
    add(2, L"<b>second</b> & \"third\" \u00fc\u65e5");
    add(2, L"last");
    const std::string page = report(L"Log");
    EXPECT_TRUE(has(page, "<h1>Activity Log</h1>"));
    EXPECT_TRUE(has(page, "<meta charset=\"utf-8\">"));
    EXPECT_TRUE(has(page, "<b>3</b>Entries"));
    EXPECT_TRUE(has(page, "<li class=\"good\"><b>1</b>Success</li>"));
    EXPECT_TRUE(has(page, "<li class=\"bad\"><b>2</b>Errors</li>"));
    EXPECT_FALSE(has(page, "Canceled</li>"));
    EXPECT_TRUE(has(page, "&lt;b&gt;second&lt;/b&gt; &amp; &quot;third&quot; \xc3\xbc\xe6\x97\xa5</td>"));
    EXPECT_FALSE(has(page, "<b>second"));
    EXPECT_TRUE(has(page, "@media print"));
}

TEST_F(ReportGenerator, SaysEachIconInAWordAndCountsEntriesAlone) {
    for (const wchar_t* message : {L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h"}) add(0, message);
    const ComPtr<IDispatch> rows = object(list_.Get(), L"ListItems");
    const wchar_t* const icons[] = {L"Good",   L"Suspect", L"Bad",    L"Failure",
                                    L"Cancel", L"SOURCE",  L"Session"};
    for (LONG i = 0; i < 7; ++i)
        EXPECT_EQ(callByName(object(rows.Get(), L"Item", {Variant(i + 1)}).Get(), L"SmallIcon",
                             DISPATCH_PROPERTYPUT, {Variant(icons[i])}),
                  S_OK);
    EXPECT_EQ(callByName(object(rows.Get(), L"Item", {Variant(8L)}).Get(), L"Tag", DISPATCH_PROPERTYPUT,
                         {Variant(L"EXPANSION")}),
              S_OK);
    showMessagesAlone();
    const std::string page = report(L"Log");
    EXPECT_EQ(rowsOfPage(page),
              (std::vector<std::string>{"good: Success|a", "suspect: Warnings|b", "bad: Errors|c",
                                        "failure: Failed|d", "cancel: Canceled|e", ": |f", "section: g",
                                        "good detail: Success|h"}));
    EXPECT_EQ(countsOfPage(page), "6 Entries, 1 Success, 1 Warnings, 1 Errors, 1 Failed, 1 Canceled");
}

TEST_F(ReportGenerator, ShowsASectionWithoutItsDashes) {
    add(0, L"a");
    const ComPtr<IDispatch> row = object(object(list_.Get(), L"ListItems").Get(), L"Item", {Variant(1L)});
    EXPECT_EQ(callByName(row.Get(), L"SmallIcon", DISPATCH_PROPERTYPUT, {Variant(L"session")}), S_OK);
    EXPECT_EQ(callByName(row.Get(), L"Text", DISPATCH_PROPERTYPUT, {Variant(L"--- now - here & there ---")}),
              S_OK);
    const std::string page = report(L"Log");
    EXPECT_EQ(rowsOfPage(page), std::vector<std::string>{"section: now - here &amp; there"});
    EXPECT_EQ(countsOfPage(page), "0 Entries");
}

TEST_F(ReportGenerator, EscapesWhateverIsInANameACaptionOrAText) {
    add(0, L"'</td><script>\"&amp;\x1\x7\n\tz");
    const ComPtr<IDispatch> header =
        object(object(list_.Get(), L"ColumnHeaders").Get(), L"Item", {Variant(L"Message")});
    EXPECT_EQ(callByName(header.Get(), L"Text", DISPATCH_PROPERTYPUT, {Variant(L"<b>M")}), S_OK);
    const std::string page = report(L"A&B");
    EXPECT_TRUE(has(page, "<title>A&amp;B</title>"));
    EXPECT_TRUE(has(page, "<h1>A&amp;B</h1>"));
    EXPECT_TRUE(has(page, "<th>&lt;b&gt;M</th>"));
    EXPECT_TRUE(has(page, "&#39;&lt;/td&gt;&lt;script&gt;&quot;&amp;amp;  ")) << page;
    EXPECT_FALSE(has(page, "<script>"));
}

TEST_F(ReportGenerator, WritesAFileOfAnyName) {
    add(0, L"a");
    call(generator_.Get(), L"CreateReport", {argument(list_.Get()), Variant(L"..\\x/y:z*?\"<>|")});
    const std::wstring output = project_.path() + L"\\Output";
    EXPECT_EQ(
        callByName(generator_.Get(), L"OutputDirectory", DISPATCH_PROPERTYPUT, {Variant(output.c_str())}),
        S_OK);
    call(generator_.Get(), L"DisplayReport", {argument(nullptr)});
    EXPECT_NE(pageIn(output + L"\\.._x_y_z______.html"), "missing");
}

TEST_F(ReportGenerator, TakesItsArgumentsByReferenceToo) {
    add(2, L"text");
    showMessagesAlone();
    IDispatch* list = list_.Get();
    Variant listInside = argument(list);
    const Variant lists[] = {byReference(VT_DISPATCH, &list), byReference(VT_VARIANT, &listInside)};
    Variant name(L"LogHistory");
    Variant nameInside(L"LogHistory");
    const Variant names[] = {byReference(VT_BSTR, &name.bstrVal), byReference(VT_VARIANT, &nameInside)};
    for (const Variant& byList : lists)
        for (const Variant& byName : names) {
            std::filesystem::remove_all(project_.path() + L"\\Output");
            EXPECT_EQ(reference(byList, byName), S_OK);
            EXPECT_EQ(rowsOfPage(display(L"LogHistory")), std::vector<std::string>{"bad: Errors|text"});
        }
    EXPECT_EQ(list, list_.Get()) << "it leaves the arguments alone";
    EXPECT_STREQ(name.bstrVal, L"LogHistory");
}

TEST_F(ReportGenerator, ShowsTheVisibleColumnsInTheirOrder) {
    add(0, L"text");
    const ComPtr<IDispatch> headers = object(list_.Get(), L"ColumnHeaders");
    const auto header = [&](const wchar_t* key) { return object(headers.Get(), L"Item", {Variant(key)}); };
    callByName(header(L"Elapsed").Get(), L"Width", DISPATCH_PROPERTYPUT, {Variant(0L)});
    callByName(header(L"Message").Get(), L"Position", DISPATCH_PROPERTYPUT, {Variant(1L)});
    const std::string page = report(L"Log");
    EXPECT_TRUE(has(page, "<th>Outcome</th><th>Message</th><th>Date</th><th>Method</th>"));
    EXPECT_FALSE(has(page, "<th>Elapsed</th>"));
    showMessagesAlone();
    EXPECT_EQ(rowsOfPage(report(L"Log")), std::vector<std::string>{"good: Success|text"});
}

TEST_F(ReportGenerator, OfAnEmptyListSaysSo) {
    const std::string page = report(L"LogHistory");
    EXPECT_TRUE(has(page, "<h1>Activity Log History</h1>"));
    EXPECT_TRUE(has(page, "There are no entries."));
    EXPECT_FALSE(has(page, "<table>"));
}

TEST_F(ReportGenerator, ShowsNothingBeforeThereIsAReport) {
    EXPECT_NE(callByName(generator_.Get(), L"DisplayReport", DISPATCH_METHOD, {argument(nullptr)}), S_OK);
}

} // namespace
} // namespace cvlog::tests
