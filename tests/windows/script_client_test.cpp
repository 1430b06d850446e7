// A script as the host: it implements the host's objects as script classes, adds an entry and reads the record back.

#include "tests/windows/com_test.h"

#include <filesystem>
#include <fstream>

namespace cvlog::tests {
namespace {

// Ends with 7 when everything held: the script engine ends with 0 also on an error.
constexpr char kScript[] = R"vbs(
Option Explicit
Class Named
    Public DisplayName
    Public AliasID
    Public ID
    Public Name
    Public Flags
    Public KeyName
    Public IconFile
    Public KeyProperty
    Public Count
    Public Value
    Public EntityType
    Public Default Property Get Item(Key)
        Set Item = Nothing
    End Property
    Public Function Property(PropertyName)
        Property = Name
    End Function
End Class
Class Options
    Public Function selectSingleNode(Query)
        Set selectSingleNode = Nothing
    End Function
End Class
Class Model
    Public Entities
    Public Function EntityFlags(FlagName)
        Dim Mask
        Set Mask = New Named
        Mask.Value = 8
        Set EntityFlags = Mask
    End Function
End Class
Class Repo
    Public ERD
    Public Function object(Identifier)
        Dim Found, Kind
        Set Kind = New Named
        Kind.ID = 1
        Kind.Flags = 1
        Kind.DisplayName = "Program"
        Kind.KeyName = "PROGRAM"
        Kind.KeyProperty = "Name"
        Set Found = New Named
        Found.ID = Identifier
        Found.Name = "PAYROLL"
        Found.DisplayName = "Payroll"
        Set Found.EntityType = Kind
        Set object = Found
    End Function
End Class
Class HostWorkspace
    Public UserOptions
    Public Repository
    Public Methods
    Public ProjectObject
    Public Folder
    Public ActiveToolList
    Public Function GetCalvettaName(Kind)
        GetCalvettaName = Folder
    End Function
    Public Function TranslateReturnCode(Code)
        TranslateReturnCode = "RC " & Code
    End Function
    Public Function GetProductInfo(InfoName)
        GetProductInfo = "CVLog3 Tests"
    End Function
    Public Function GetHelpFile(FileName)
        GetHelpFile = "C:\" & FileName
    End Function
End Class

Sub Check(Condition, Number)
    If Not Condition Then WScript.Quit Number
End Sub

Dim Workspace, Log, Rows
Set Workspace = New HostWorkspace
Workspace.Folder = WScript.Arguments(0)
Set Workspace.UserOptions = New Options
Set Workspace.Methods = New Named
Set Workspace.Repository = New Repo
Set Workspace.Repository.ERD = New Model
Set Workspace.Repository.ERD.Entities = New Named
Workspace.Repository.ERD.Entities.Count = 0

Set Log = CreateObject("CVLog3.CVLog")
Check Log.OpenDB(Workspace), 10
Log.SeriesStart "verify"
Log.Add "verify", 1, "O1", "two" & vbCrLf & "lines"
Set Rows = Log.LogDB.OpenRecordset("select * from LogInfo order by RecordNum")
Check Not Rows.EOF, 11
Check Rows.Fields("MethodName").Value = "verify", 12
Check Rows.Fields("ObjectName").Value = "PAYROLL", 13
Check Rows.Fields("ReturnMessage").Value = 1, 14
Check Mid(Rows.Fields("LogMessage").Value, 21) = "verify applied to Payroll (Program) - RC 1. two" & vbCrLf & "lines", 15
Rows.MoveNext
Check Rows.EOF, 16
Rows.Close
Log.CloseDB
WScript.Quit 7
)vbs";

std::wstring system32() {
    wchar_t path[MAX_PATH];
    GetSystemDirectoryW(path, MAX_PATH);
    return path;
}

DWORD run(std::wstring command) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                               nullptr, &startup, &process));
    DWORD code = STILL_ACTIVE;
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 60'000), static_cast<DWORD>(WAIT_OBJECT_0));
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

/// The machine-wide registration, for clients that cannot carry a manifest.
class Registration {
public:
    Registration() { code_ = run(command(L"")); }
    ~Registration() { EXPECT_EQ(run(command(L"/u ")), 0U); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    DWORD code() const { return code_; }

private:
    static std::wstring command(const wchar_t* option) {
        return L"\"" + system32() + L"\\regsvr32.exe\" /s " + option + L"\"" + binFolder() +
               L"\\CVLog3.dll\"";
    }
    DWORD code_;
};

TEST(ScriptClient, AScriptHostAddsAnEntryAndReadsItsRecordThroughTheLogsDatabase) {
    const Registration registration;
    ASSERT_EQ(registration.code(), 0U);
    const ProjectFolder project;
    const std::wstring script = project.path() + L"\\host.vbs";
    std::ofstream(std::filesystem::path(script), std::ios::binary) << kScript;
    EXPECT_EQ(
        run(L"\"" + system32() + L"\\cscript.exe\" //nologo \"" + script + L"\" \"" + project.path() + L"\""),
        7U);
}

TEST(ScriptClient, RegistrationAndItsRemovalLeaveNoClassBehind) {
    CLSID id = {};
    {
        const Registration registration;
        ASSERT_EQ(registration.code(), 0U);
        EXPECT_EQ(CLSIDFromProgID(L"CVLog3.CVLogControl", &id), S_OK);
    }
    EXPECT_NE(CLSIDFromProgID(L"CVLog3.CVLogControl", &id), S_OK);
}

} // namespace
} // namespace cvlog::tests
