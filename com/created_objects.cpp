#include "com/created_objects.h"

#include "automation/error.h"
#include "com/com_ptr.h"
#include "com/object_bridge.h"
#include "com/variants.h"

#include <string>

namespace cvlog::com {

automation::ObjectRef CreatedObjects::create(std::u16string_view className) {
    const std::u16string name(className);
    CLSID id;
    ComPtr<IDispatch> made;
    HRESULT result = CLSIDFromProgID(wide(name.c_str()), &id);
    if (SUCCEEDED(result))
        result =
            CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, __uuidof(IDispatch),
                             reinterpret_cast<void**>(made.ReleaseAndGetAddressOf()));
    if (FAILED(result))
        throw automation::AutomationError(result, u"No object can be made of the class " + name);
    return toObject(made.Get());
}

} // namespace cvlog::com
