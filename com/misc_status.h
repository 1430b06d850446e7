#pragma once

#include <windows.h>

#include <oleidl.h>

namespace cvlog::com {

/// How containers have to treat the control; the manifests say the same in words.
inline constexpr DWORD kControlMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                            OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                            OLEMISC_SETCLIENTSITEFIRST;

} // namespace cvlog::com
