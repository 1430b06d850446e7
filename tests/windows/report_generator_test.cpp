// The sample report generator over the list of a real log control: what its page says, and where it goes.

#include "tests/windows/com_test.h"
#include "tests/windows/script_host.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace cvlog::tests {
namespace {

namespace fs = std::filesystem;

constexpr GUID kReportClass = {0x4e0d7a52, 0x8c1b, 0x4f3a, {0x9d, 0x6e, 0x51, 0xc2, 0xb7, 0xf0, 0xa9, 0x38}};
constexpr wchar_t kUnattended[] = L"TLREPORT_UNATTENDED";

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
        const std::wstring output = project_.path() + L"\\Output";
        call(generator_.Get(), L"CreateReport", {argument(list_.Get()), Variant(name)});
        EXPECT_EQ(call(generator_.Get(), L"Interrupted").boolVal, VARIANT_FALSE);
        EXPECT_EQ(
            callByName(generator_.Get(), L"OutputDirectory", DISPATCH_PROPERTYPUT, {Variant(output.c_str())}),
            S_OK);
        call(generator_.Get(), L"DisplayReport", {argument(nullptr)});
        std::ifstream file(fs::path(output + L"\\" + name + L".html"), std::ios::binary);
        EXPECT_TRUE(file.is_open());
        return {std::istreambuf_iterator<char>(file), {}};
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

TEST_F(ReportGenerator, ShowsTheVisibleColumnsInTheirOrder) {
    add(0, L"text");
    const ComPtr<IDispatch> headers = object(list_.Get(), L"ColumnHeaders");
    const auto header = [&](const wchar_t* key) { return object(headers.Get(), L"Item", {Variant(key)}); };
    callByName(header(L"Elapsed").Get(), L"Width", DISPATCH_PROPERTYPUT, {Variant(0L)});
    callByName(header(L"Message").Get(), L"Position", DISPATCH_PROPERTYPUT, {Variant(1L)});
    const std::string page = report(L"Log");
    EXPECT_TRUE(has(page, "<th>Outcome</th><th>Message</th><th>Date</th><th>Method</th>"));
    EXPECT_FALSE(has(page, "<th>Elapsed</th>"));
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
