// The hosts that README.md shows: they are the files in docs/samples, and those work.

#include "tests/windows/script_client.h"
#include "tests/windows/script_host.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string_view>
#include <vector>

void logReports(IDispatch* workspace);

namespace cvlog::tests {
namespace {

std::string sourceText(const char* name) {
    const std::filesystem::path root = std::filesystem::path(binFolder()) / ".." / ".." / "..";
    std::ifstream file(root / name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The names in a source text: what stands in u"..." and is a name.
std::vector<std::string> namesIn(const std::string& source) {
    std::vector<std::string> names;
    const std::regex name("u\"([A-Za-z]+)\"");
    for (std::sregex_iterator found(source.begin(), source.end(), name), end; found != end; ++found)
        names.push_back((*found)[1]);
    return names;
}

/// The only block of the README in a language.
std::string shownIn(std::string_view language) {
    const std::string readme = sourceText("README.md");
    const std::string opening = "\n```" + std::string(language) + "\n";
    const std::size_t fence = readme.find(opening);
    EXPECT_NE(fence, std::string::npos) << language;
    if (fence == std::string::npos) return "";
    EXPECT_EQ(readme.find(opening, fence + 1), std::string::npos) << language;
    const std::size_t start = fence + opening.size();
    return readme.substr(start, readme.find("```", start) - start);
}

class ReadmeClient : public ComTest {
protected:
    ReadmeClient() : workspace_(com::adopt<IDispatch>(makeWorkspace(project_.path()))) {}

    /// What a query for one field answers in the project's database, opened anew.
    Variant recorded(const wchar_t* query, const wchar_t* field) {
        Variant value;
        const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
        if (!log || !openDb(log.Get(), workspace_.Get())) {
            ADD_FAILURE() << "the database does not open";
            return value;
        }
        Variant database;
        EXPECT_EQ(callByName(log.Get(), L"LogDB", DISPATCH_PROPERTYGET, {}, &database), S_OK);
        Variant records;
        EXPECT_EQ(
            callByName(database.pdispVal, L"OpenRecordset", DISPATCH_METHOD, {Variant(query)}, &records),
            S_OK);
        Variant found;
        EXPECT_EQ(callByName(records.pdispVal, L"Fields", DISPATCH_PROPERTYGET, {Variant(field)}, &found),
                  S_OK);
        EXPECT_EQ(callByName(found.pdispVal, L"Value", DISPATCH_PROPERTYGET, {}, &value), S_OK);
        EXPECT_EQ(callByName(log.Get(), L"CloseDB", DISPATCH_METHOD, {}), S_OK);
        return value;
    }

    ProjectFolder project_;
    ComPtr<IDispatch> workspace_;
};

TEST_F(ReadmeClient, TheReadmeShowsTheSamples) {
    EXPECT_EQ(shownIn("vbs"), sourceText("docs/samples/host.vbs"));
    EXPECT_EQ(shownIn("cpp"), sourceText("docs/samples/host.cpp"));
}

TEST_F(ReadmeClient, TheHostInterfaceNamesEveryMemberThatIsCalled) {
    const std::string page = sourceText("docs/host-interface.md");
    for (const char* file : {"host_window.h", "late_bound.h", "options_document.h", "repository.h",
                             "workspace.h", "font_object.cpp"}) {
        const std::vector<std::string> names = namesIn(sourceText((std::string("hostapi/") + file).c_str()));
        EXPECT_FALSE(names.empty()) << file;
        for (const std::string& name : names)
            EXPECT_TRUE(std::regex_search(page, std::regex("`" + name + "[`(]"))) << file << ": " << name;
    }
}

TEST_F(ReadmeClient, TheHostInCppStoresItsReports) {
    logReports(workspace_.Get());
    EXPECT_EQ(recorded(L"select count(*) as N from LogInfo", L"N").lVal, 2);
    const Variant message =
        recorded(L"select LogMessage from LogInfo order by RecordNum desc", L"LogMessage");
    ASSERT_EQ(message.vt, VT_BSTR);
    EXPECT_NE(std::wstring(message.bstrVal).find(L"RC 1. 2 warnings"), std::wstring::npos) << message.bstrVal;
}

TEST_F(ReadmeClient, TheHostInVbScriptStoresItsReports) {
    constexpr char kAfterwards[] = R"vbs(
Check Log.OpenDB(Workspace), 20
Set Rows = Log.LogDB.OpenRecordset("select * from LogInfo order by RecordNum")
Check Rows.Fields("ReturnMessage").Value = 0, 21
Rows.MoveNext
Check Rows.Fields("ReturnMessage").Value = 1, 22
Check Right(Rows.Fields("LogMessage").Value, 16) = "RC 1. 2 warnings", 23
Rows.MoveNext
Check Rows.EOF, 24
Rows.Close
Log.CloseDB
WScript.Quit 7
)vbs";
    const ScriptRegistration registration;
    ASSERT_EQ(registration.code(), 0U);
    EXPECT_EQ(runScript(project_, scriptedHost() + sourceText("docs/samples/host.vbs") + kAfterwards),
              kScriptHeld);
}

} // namespace
} // namespace cvlog::tests
