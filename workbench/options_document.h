#pragma once

#include <string>

#include "workbench/variant.h"

namespace workbench {

/// The user's options, an XML document kept in `path`, as the object that the log asks for them:
/// `selectSingleNode` (XPath; the nodes are the parser's own), `Save`, and the event `Saved` (dispatch id 1)
/// after each save. A missing file gives the default options, and is written by the first `Save`. Throws
/// Failure on broken XML.
ComPtr<IDispatch> makeOptionsDocument(const std::wstring& path);

} // namespace workbench
