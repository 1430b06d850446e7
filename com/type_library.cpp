#include "com/type_library.h"

#include "com/com_ptr.h"
#include "com/module.h"

namespace cvlog::com {

HRESULT typeInfoOf(REFGUID id, ITypeInfo** info) noexcept {
    if (!info) return E_POINTER;
    *info = nullptr;
    wchar_t path[32768];
    const DWORD length = GetModuleFileNameW(thisModule(), path, ARRAYSIZE(path));
    if (length == 0 || length == ARRAYSIZE(path)) return TYPE_E_CANTLOADLIBRARY;
    ComPtr<ITypeLib> library;
    const HRESULT result = LoadTypeLibEx(path, REGKIND_NONE, &library);
    return SUCCEEDED(result) ? library->GetTypeInfoOfGuid(id, info) : result;
}

} // namespace cvlog::com
