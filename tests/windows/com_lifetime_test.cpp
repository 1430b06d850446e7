// The library from outside: loaded, used, released and unloaded again.

#include "tests/windows/com_test.h"
#include "tests/windows/loaded_library.h"
#include "tests/windows/script_host.h"

namespace cvlog::tests {
namespace {

class LibraryLifetime : public ComTest {};

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
    EXPECT_EQ(SendMessageW(reinterpret_cast<HWND>(static_cast<LONG_PTR>(window.lVal)),
                           0x1004 /* LVM_GETITEMCOUNT */, 0, 0),
              1);
}

TEST_F(LibraryLifetime, ALibraryThatIsUsedAHundredTimesUnloadsEachTimeAndLeavesNothingBehind) {
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
            userHandles = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
            gdiHandles = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
        }
    }
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
