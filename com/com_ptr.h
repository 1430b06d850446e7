#pragma once

#include <wrl/client.h>

namespace cvlog::com {

using Microsoft::WRL::ComPtr;

/// Takes over the caller's reference. (Attach of this toolchain's ComPtr adds one of its own.)
template <class Interface>
ComPtr<Interface> adopt(Interface* object) {
    ComPtr<Interface> owner(object);
    if (object) object->Release();
    return owner;
}

} // namespace cvlog::com
