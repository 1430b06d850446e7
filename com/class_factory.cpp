#include "com/class_factory.h"

#include "com/control_shell.h"
#include "com/firewall.h"
#include "com/guids.h"
#include "com/heap_object.h"
#include "com/log_shell.h"

namespace cvlog::com {

namespace {

using Maker = ComObject* (*)(IUnknown* outer);

template <class Shell>
ComObject* make(IUnknown* outer) {
    return new Shell(outer, Apartment::enter());
}

class ClassFactory final : public HeapObject<IClassFactory> {
public:
    explicit ClassFactory(Maker maker) : maker_(maker) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
        return firewall([&]() -> HRESULT {
            if (!result) return E_POINTER;
            *result = nullptr;
            if (outer && id != IID_IUnknown) return CLASS_E_NOAGGREGATION;
            const ComPtr<IUnknown> object = adopt(maker_(outer)->inner());
            return object->QueryInterface(id, result);
        });
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        ModuleLock::add(lock ? 1 : -1);
        return S_OK;
    }

private:
    Maker maker_;
};

} // namespace

HRESULT getClassObject(REFCLSID classId, REFIID interfaceId, void** object) noexcept {
    return firewall([&]() -> HRESULT {
        if (!object) return E_POINTER;
        *object = nullptr;
        Maker maker = nullptr;
        if (classId == kLogClass)
            maker = make<LogShell>;
        else if (classId == kControlClass)
            maker = make<ControlShell>;
        if (!maker) return CLASS_E_CLASSNOTAVAILABLE;
        const ComPtr<IClassFactory> factory = adopt<IClassFactory>(new ClassFactory(maker));
        return factory->QueryInterface(interfaceId, object);
    });
}

} // namespace cvlog::com
