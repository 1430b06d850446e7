#pragma once

#include "tests/windows/com_test.h"

namespace cvlog::tests {

/// The library loaded by hand, so that the test sees it go.
class LoadedLibrary {
public:
    LoadedLibrary() : module_(LoadLibraryW((binFolder() + L"\\CVLog3.dll").c_str())) {}
    ~LoadedLibrary() {
        if (module_) FreeLibrary(module_);
    }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    bool loaded() const { return module_ != nullptr; }
    HMODULE module() const { return module_; }
    HRESULT canUnload() const { return entry<HRESULT(WINAPI*)()>("DllCanUnloadNow")(); }
    HRESULT registers() const { return entry<HRESULT(WINAPI*)()>("DllRegisterServer")(); }
    HRESULT unregisters() const { return entry<HRESULT(WINAPI*)()>("DllUnregisterServer")(); }
    HRESULT classObject(const GUID& id, void** factory) const {
        using GetClass = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
        return entry<GetClass>("DllGetClassObject")(id, IID_IClassFactory, factory);
    }
    ComPtr<IClassFactory> factory(const GUID& id) const {
        ComPtr<IClassFactory> made;
        EXPECT_EQ(classObject(id, reinterpret_cast<void**>(made.GetAddressOf())), S_OK);
        return made;
    }
    ComPtr<IDispatch> create(const GUID& id) const {
        ComPtr<IDispatch> object;
        EXPECT_EQ(factory(id)->CreateInstance(nullptr, IID_IDispatch,
                                              reinterpret_cast<void**>(object.GetAddressOf())),
                  S_OK);
        return object;
    }

private:
    template <class Function>
    Function entry(const char* name) const {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }
    HMODULE module_;
};

} // namespace cvlog::tests
