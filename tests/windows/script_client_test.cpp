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

constexpr char kListScript[] = R"vbs(
Option Explicit
Sub Check(Condition, Number)
    If Not Condition Then WScript.Quit Number
End Sub

Dim Ctl, List, Item, Header, i, Walked
Set Ctl = CreateObject("CVLog3.CVLogControl")
Set List = Ctl.Controls("lvLog")
Check Ctl.Controls.Count = 1, 10
For i = 1 To 3
    Set Item = List.ListItems.Add(i, "key" & i, "row " & i)
    Item.Tag = "tag " & i
    Item.SubItems(2) = "method " & i
Next
Walked = ""
For i = 1 To Ctl.Controls("lvLog").ListItems.Count
    Walked = Walked & List.ListItems(i).Text & "/" & List.ListItems(i).Tag & "/"
    Walked = Walked & List.ListItems(i).SubItems(2) & ";"
Next
Check Walked = "row 1/tag 1/method 1;row 2/tag 2/method 2;row 3/tag 3/method 3;", 11
Walked = ""
For i = 1 To List.ColumnHeaders.Count
    Set Header = List.ColumnHeaders(i)
    If Header.Width > 0 Then Walked = Walked & Header.Key & " "
Next
Check Walked = "Date Elapsed Method Type Name Result Message ", 12
Walked = ""
For Each Item In List.ListItems
    Walked = Walked & Item.Text & ";"
Next
For Each Header In List.ColumnHeaders
    Walked = Walked & Header.Key & " "
Next
For Each Item In List.ListItems(3).ListSubItems
    Walked = Walked & Item.Text & ";"
Next
For Each Item In Ctl.Controls
    Walked = Walked & Item.ListItems.Count
Next
Check Walked = "row 1;row 2;row 3;Date Elapsed Method Type Name Result Message ;method 3;3", 23
Check List.ListItems("KEY2").Index = 2, 13
Check List.ListItems(2).ListSubItems("Method").Text = "method 2", 14
Check List.ListItems(2).ListSubItems.Count = 2, 15
Check List.SelectedItem Is Nothing, 16
Set List.SelectedItem = List.ListItems(3)
Check List.SelectedItem.Key = "key3", 17
List.SortOrder = 1
List.Sorted = True
Check List.ListItems(1).Text = "row 3", 18
Check List.FindItem("ROW 1").Index = 3, 19
List.ListItems.Remove "key1"
Check List.ListItems.Count = 2, 20
On Error Resume Next
i = List.ListItems(3).Text
Check 35600 = (Err.Number And &HFFFF&), 21
Err.Clear
i = Ctl.Controls("none").hWnd
Check 730 = (Err.Number And &HFFFF&), 22
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

DWORD runScript(const ProjectFolder& folder, const char* script) {
    const std::wstring file = folder.path() + L"\\host.vbs";
    std::ofstream(std::filesystem::path(file), std::ios::binary) << script;
    return run(L"\"" + system32() + L"\\cscript.exe\" //nologo \"" + file + L"\" \"" + folder.path() + L"\"");
}

TEST(ScriptClient, AScriptHostAddsAnEntryAndReadsItsRecordThroughTheLogsDatabase) {
    const Registration registration;
    ASSERT_EQ(registration.code(), 0U);
    const ProjectFolder project;
    EXPECT_EQ(runScript(project, kScript), 7U);
}

TEST(ScriptClient, AScriptWalksAndChangesTheListOfAControl) {
    const Registration registration;
    ASSERT_EQ(registration.code(), 0U);
    const ProjectFolder folder;
    EXPECT_EQ(runScript(folder, kListScript), 7U);
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
