#include "tests/windows/script_client.h"

#include <filesystem>
#include <fstream>

namespace cvlog::tests {
namespace {

constexpr char kHost[] = R"vbs(
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

std::wstring registration(const wchar_t* option) {
    return L"\"" + system32() + L"\\regsvr32.exe\" /s " + option + L"\"" + binFolder() + L"\\CVLog3.dll\"";
}

} // namespace

ScriptRegistration::ScriptRegistration() : code_(run(registration(L""))) {}

ScriptRegistration::~ScriptRegistration() { EXPECT_EQ(run(registration(L"/u ")), 0U); }

std::string scriptedHost() { return kHost; }

DWORD runScript(const ProjectFolder& folder, const std::string& script) {
    const std::wstring file = folder.path() + L"\\host.vbs";
    std::ofstream(std::filesystem::path(file), std::ios::binary) << script;
    return run(L"\"" + system32() + L"\\cscript.exe\" //nologo \"" + file + L"\" \"" + folder.path() + L"\"");
}

} // namespace cvlog::tests
