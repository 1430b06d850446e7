#pragma once

#include <windows.h>

#include <string>

#include "workbench/variant.h"

namespace workbench {

// The document's events: {0D7B3F52-8A5E-4C1D-B7A6-91E4C2F0D835}
inline constexpr IID kOptionsEvents{
    0x0d7b3f52, 0x8a5e, 0x4c1d, {0xb7, 0xa6, 0x91, 0xe4, 0xc2, 0xf0, 0xd8, 0x35}};
inline constexpr DISPID kSaved = 1;

/// The user's options, an XML document kept in `path`, as the object that the log asks for them:
/// `selectSingleNode` (XPath; the nodes are the parser's own), `Save`, and the event `Saved`
/// after each save. A missing file gives the default options, and is written by the first `Save`. Throws
/// Failure on broken XML.
ComPtr<IDispatch> makeOptionsDocument(const std::wstring& path);

} // namespace workbench
