#include "tests/windows/import_spy.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <utility>

namespace cvlog::tests {

namespace {

using Thing = std::pair<const void*, std::uintptr_t>; // a timer is its window's

struct Kind {
    std::set<Thing> held;
    int taken = 0;

    void take(Thing thing) {
        ++taken;
        held.insert(thing);
    }
};

std::map<std::string, Kind> kinds;

template <class Handle>
Handle taken(const char* kind, Handle handle) {
    if (handle) kinds[kind].take({reinterpret_cast<const void*>(handle), 0});
    return handle;
}

template <class Handle>
void given(const char* kind, Handle handle) {
    kinds[kind].held.erase({reinterpret_cast<const void*>(handle), 0});
}

HHOOK WINAPI setHook(int kind, HOOKPROC procedure) {
    return taken("hooks", SetWindowsHookA(kind, procedure));
}
HHOOK WINAPI setHookEx(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    return taken("hooks", SetWindowsHookExW(kind, procedure, module, thread));
}
BOOL WINAPI unhook(HHOOK hook) {
    given("hooks", hook);
    return UnhookWindowsHookEx(hook);
}
UINT_PTR WINAPI setTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    const UINT_PTR timer = SetTimer(window, id, milliseconds, procedure);
    if (timer) kinds["timers"].take({window, window ? id : timer});
    return timer;
}
BOOL WINAPI killTimer(HWND window, UINT_PTR id) {
    kinds["timers"].held.erase({window, id});
    return KillTimer(window, id);
}
HMENU WINAPI createMenu() { return taken("menus", CreatePopupMenu()); }
// With a menu go those in it.
void forgetMenu(HMENU menu) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        if (const HMENU below = GetSubMenu(menu, i)) forgetMenu(below);
    given("menus", menu);
}
BOOL WINAPI destroyMenu(HMENU menu) {
    forgetMenu(menu);
    return DestroyMenu(menu);
}
HICON WINAPI createIcon(PICONINFO info) { return taken("icons", CreateIconIndirect(info)); }
HANDLE WINAPI loadImage(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) {
    const HANDLE image = LoadImageW(module, name, type, width, height, flags);
    return type == IMAGE_ICON && !(flags & LR_SHARED) ? taken("icons", image) : image;
}
BOOL WINAPI destroyIcon(HICON icon) {
    given("icons", icon);
    return DestroyIcon(icon);
}
HIMAGELIST WINAPI createList(int width, int height, UINT flags, int count, int more) {
    return taken("icon lists", ImageList_Create(width, height, flags, count, more));
}
BOOL WINAPI destroyList(HIMAGELIST list) {
    given("icon lists", list);
    return ImageList_Destroy(list);
}
ATOM WINAPI registerClass(const WNDCLASSEXW* description) {
    const ATOM atom = RegisterClassExW(description);
    if (atom) kinds["window classes"].take({nullptr, std::hash<std::wstring>()(description->lpszClassName)});
    return atom;
}
BOOL WINAPI unregisterClass(LPCWSTR name, HINSTANCE module) {
    const BOOL gone = UnregisterClassW(name, module);
    if (gone) kinds["window classes"].held.erase({nullptr, std::hash<std::wstring>()(name)});
    return gone;
}

LSTATUS WINAPI openKey(HKEY key, LPCWSTR name, DWORD options, REGSAM access, PHKEY opened) {
    const LSTATUS status = RegOpenKeyExW(key, name, options, access, opened);
    if (status == ERROR_SUCCESS) taken("registry keys", *opened);
    return status;
}
LSTATUS WINAPI createKey(HKEY key, LPCWSTR name, DWORD reserved, LPWSTR kind, DWORD options, REGSAM access,
                         LPSECURITY_ATTRIBUTES security, PHKEY opened, LPDWORD made) {
    const LSTATUS status =
        RegCreateKeyExW(key, name, reserved, kind, options, access, security, opened, made);
    if (status == ERROR_SUCCESS) taken("registry keys", *opened);
    return status;
}
LSTATUS WINAPI closeKey(HKEY key) {
    given("registry keys", key);
    return RegCloseKey(key);
}

struct Import {
    const char* name;
    void* replacement;
};

template <class Function>
Import import(const char* name, Function* function) {
    return {name, reinterpret_cast<void*>(function)};
}

void replace(void** place, void* function) {
    DWORD before = 0;
    ASSERT_TRUE(VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before));
    *place = function;
    VirtualProtect(place, sizeof *place, before, &before);
}

/// The library's imports by name, each with the place of its address.
template <class Visit>
void visitImports(HMODULE library, Visit visit) {
    auto* const base = reinterpret_cast<char*>(library);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory); from->Name;
         ++from) {
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
        auto* place = reinterpret_cast<void**>(base + from->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++place)
            if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                visit(reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData)->Name,
                      place);
    }
}

} // namespace

ImportSpy::ImportSpy(HMODULE library) {
    const Import imports[] = {import("SetWindowsHookA", setHook),
                              import("SetWindowsHookExW", setHookEx),
                              import("UnhookWindowsHookEx", unhook),
                              import("SetTimer", setTimer),
                              import("KillTimer", killTimer),
                              import("CreatePopupMenu", createMenu),
                              import("DestroyMenu", destroyMenu),
                              import("CreateIconIndirect", createIcon),
                              import("LoadImageW", loadImage),
                              import("DestroyIcon", destroyIcon),
                              import("ImageList_Create", createList),
                              import("ImageList_Destroy", destroyList),
                              import("RegisterClassExW", registerClass),
                              import("UnregisterClassW", unregisterClass),
                              import("RegOpenKeyExW", openKey),
                              import("RegCreateKeyExW", createKey),
                              import("RegCloseKey", closeKey)};
    kinds.clear();
    visitImports(library, [&](const void* name, void** place) {
        for (const Import& import : imports)
            if (std::strcmp(static_cast<const char*>(name), import.name) == 0)
                replace(place, import.replacement);
    });
}

ImportSpy::~ImportSpy() { kinds.clear(); }

std::map<std::string, int> ImportSpy::held() {
    std::map<std::string, int> counts;
    for (const auto& [name, kind] : kinds) {
        counts[name] = 0;
        for (const auto& [owner, id] : kind.held) {
            const auto window = static_cast<HWND>(const_cast<void*>(owner));
            counts[name] += name == "timers" && window && !IsWindow(window) ? 0 : 1;
        }
    }
    return counts;
}

std::map<std::string, int> ImportSpy::taken() {
    std::map<std::string, int> counts;
    for (const auto& [name, kind] : kinds) counts[name] = kind.taken;
    return counts;
}

} // namespace cvlog::tests
