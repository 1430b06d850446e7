#include "com/module.h"

#include "com/apartment.h"
#include "com/class_factory.h"
#include "com/registration.h"

#include <atomic>

namespace cvlog::com {

namespace {

std::atomic<LONG> locks{0};
HMODULE module = nullptr;

} // namespace

ModuleLock::ModuleLock() noexcept { add(1); }

ModuleLock::~ModuleLock() { add(-1); }

bool ModuleLock::isFree() noexcept { return locks.load() == 0; }

void ModuleLock::add(LONG count) noexcept { locks.fetch_add(count); }

HMODULE thisModule() noexcept { return module; }

} // namespace cvlog::com

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) {
        cvlog::com::module = instance;
        DisableThreadLibraryCalls(instance);
        return cvlog::com::Apartment::allocateSlot() ? TRUE : FALSE;
    }
    if (reason == DLL_PROCESS_DETACH) cvlog::com::Apartment::freeSlot();
    return TRUE;
}

STDAPI DllCanUnloadNow() { return cvlog::com::ModuleLock::isFree() ? S_OK : S_FALSE; }

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
    return cvlog::com::getClassObject(classId, interfaceId, object);
}

STDAPI DllRegisterServer() { return cvlog::com::registerServer(); }

STDAPI DllUnregisterServer() { return cvlog::com::unregisterServer(); }
