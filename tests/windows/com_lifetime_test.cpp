// The library from outside: loaded, used, released and unloaded again.

#include "tests/windows/com_test.h"
#include "tests/windows/from_the_loop.h"
#include "tests/windows/held_keys.h"
#include "tests/windows/loaded_library.h"
#include "tests/windows/real_input.h"
#include "tests/windows/script_host.h"

namespace cvlog::tests {
namespace {

class LibraryLifetime : public ComTest {};

constexpr UINT kItemCount = 0x1004; // LVM_GETITEMCOUNT
constexpr UINT kHeader = 0x101F;    // LVM_GETHEADER

/// Sorts, copies and opens the menu, as a user does.
void useLikeAUser(HWND list) {
    const HWND header = reinterpret_cast<HWND>(SendMessageW(list, kHeader, 0, 0));
    SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
    SendMessageW(header, WM_LBUTTONUP, 0, MAKELPARAM(20, 5));
    {
        const HeldKeys control{VK_CONTROL};
        SendMessageW(list, WM_KEYDOWN, 'C', 1);
        SendMessageW(list, WM_KEYUP, 'C', 1);
    }
    bool opened = false;
    FromTheLoop inMenu([&opened] {
        if (!menuWindow()) return false;
        opened = true;
        EndMenu();
        return true;
    });
    const HeldKeys shift{VK_SHIFT};
    SendMessageW(list, WM_SYSKEYDOWN, VK_F10, 1);
    EXPECT_TRUE(opened);
}

BOOL CALLBACK countWindow(HWND, LPARAM counter) {
    ++*reinterpret_cast<int*>(counter);
    return TRUE;
}

/// Windows of this thread, seen and unseen.
int windowCount() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), countWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

void useOnce(const LoadedLibrary& library, ComTest&) {
    EXPECT_EQ(library.canUnload(), S_OK);
    const ComPtr<IDispatch> log = library.create(com::kLogClass);
    const ComPtr<IDispatch> control = library.create(com::kControlClass);
    EXPECT_EQ(library.canUnload(), S_FALSE);
    EXPECT_EQ(callByName(log.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}), S_OK);
    EXPECT_EQ(callByName(log.Get(), L"Add", DISPATCH_METHOD,
                         {Variant(L""), Variant(1L), Variant(L""), Variant(L"m")}),
              S_OK);
    Variant window;
    EXPECT_EQ(callByName(control.Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &window), S_OK);
    const auto list = reinterpret_cast<HWND>(static_cast<LONG_PTR>(window.lVal));
    EXPECT_EQ(SendMessageW(list, kItemCount, 0, 0), 1);
    Variant controls;
    EXPECT_EQ(callByName(control.Get(), L"Controls", DISPATCH_PROPERTYGET, {}, &controls), S_OK);
    useLikeAUser(list);
}

TEST_F(LibraryLifetime, ALibraryThatIsUsedAHundredTimesUnloadsEachTimeAndLeavesNothingBehind) {
    int windows = 0;
    DWORD userHandles = 0;
    DWORD gdiHandles = 0;
    for (int round = 0; round < 100; ++round) {
        {
            const LoadedLibrary library;
            ASSERT_TRUE(library.loaded());
            useOnce(library, *this);
            ASSERT_EQ(library.canUnload(), S_OK) << "round " << round;
        }
        ASSERT_EQ(GetModuleHandleW(L"CVLog3.dll"), nullptr) << "round " << round;
        if (round == 4) { // caches of the system have filled by then
            windows = windowCount();
            userHandles = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
            gdiHandles = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
        }
    }
    EXPECT_LE(windowCount(), windows);
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), userHandles);
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), gdiHandles);
}

TEST_F(LibraryLifetime, AServerLockKeepsTheLibraryAndItsReleaseFreesIt) {
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded());
    {
        const ComPtr<IDispatch> log = library.create(com::kLogClass);
        EXPECT_EQ(library.canUnload(), S_FALSE);
    }
    EXPECT_EQ(library.canUnload(), S_OK);
}

TEST_F(LibraryLifetime, HostObjectsAreAllReleasedByCloseDbAndByTheLastRelease) {
    const ProjectFolder project;
    const int before = ScriptedDispatch::alive();
    {
        const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
        ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project.path()));
        EXPECT_TRUE(openDb(log.Get(), workspace.Get()));
        workspace.Reset();
        EXPECT_GT(ScriptedDispatch::alive(), before) << "the open log holds its workspace";
        EXPECT_EQ(callByName(log.Get(), L"CloseDB", DISPATCH_METHOD, {}), S_OK);
        EXPECT_EQ(ScriptedDispatch::alive(), before);

        workspace = com::adopt<IDispatch>(makeWorkspace(project.path()));
        EXPECT_TRUE(openDb(log.Get(), workspace.Get()));
    }
    EXPECT_EQ(ScriptedDispatch::alive(), before)
        << "a log that is released without CloseDB lets go of its host as well";
}

TEST_F(LibraryLifetime, AnUnknownClassIsRefused) {
    const LoadedLibrary library;
    void* object = &object;
    EXPECT_EQ(library.classObject(CLSID_NULL, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
}

} // namespace
} // namespace cvlog::tests
