// TLReport.dll: the class "Tabulite.TLReport" for programs that name the library in their manifest.

#include <windows.h>

#include <unknwn.h>

#include <new>

#include "workbench/failure.h"
#include "workbench/report/report_generator.h"

namespace workbench::report {

namespace {

class Factory final : public ComObject<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (!object) {
            return E_POINTER;
        }
        *object = nullptr;
        if (outer) {
            return CLASS_E_NOAGGREGATION;
        }
        try {
            return makeReportGenerator()->QueryInterface(iid, object);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

} // namespace

} // namespace workbench::report

// The library stays until its program ends: its objects are not counted.
STDAPI DllCanUnloadNow() { return S_FALSE; }

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
    using namespace workbench;
    if (!object) {
        return E_POINTER;
    }
    *object = nullptr;
    if (classId != report::kReportClass) {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    try {
        return makeObject<report::Factory>()->QueryInterface(iid, object);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}
