// A script as the host: it implements the host's objects as script classes, adds an entry and reads the record back.

#include "tests/windows/script_client.h"

namespace cvlog::tests {
namespace {

constexpr char kScript[] = R"vbs(
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
Check Ctl.Controls.Count = 17, 10
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
Check Walked = "row 1;row 2;row 3;Date Elapsed Method Type Name Result Message ;method 3;", 23
i = 0
For Each Item In Ctl.Controls
    i = i + 1
Next
Check i = 17, 24
Check Ctl.Controls("mnuLogDelete").Caption = "&Delete Records", 25
Ctl.Controls("mnuLogDelete").Enabled = False
Check Not Ctl.Controls("mnuLogDelete").Enabled, 26
Check Ctl.Controls("mnuColumn").Item(1).Tag = "Elapsed", 27
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

TEST(ScriptClient, AScriptHostAddsAnEntryAndReadsItsRecordThroughTheLogsDatabase) {
    const ScriptRegistration registration;
    ASSERT_EQ(registration.code(), 0U);
    const ProjectFolder project;
    EXPECT_EQ(runScript(project, scriptedHost() + kScript), kScriptHeld);
}

TEST(ScriptClient, AScriptWalksAndChangesTheListOfAControl) {
    const ScriptRegistration registration;
    ASSERT_EQ(registration.code(), 0U);
    const ProjectFolder folder;
    EXPECT_EQ(runScript(folder, kListScript), kScriptHeld);
}

TEST(ScriptClient, RegistrationAndItsRemovalLeaveNoClassBehind) {
    CLSID id = {};
    {
        const ScriptRegistration registration;
        ASSERT_EQ(registration.code(), 0U);
        EXPECT_EQ(CLSIDFromProgID(L"CVLog3.CVLogControl", &id), S_OK);
    }
    EXPECT_NE(CLSIDFromProgID(L"CVLog3.CVLogControl", &id), S_OK);
}

} // namespace
} // namespace cvlog::tests
