#include "workbench/options_document.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/script_object.h"

namespace workbench {

namespace {

constexpr const wchar_t* kDefaultOptions = LR"(<?xml version="1.0"?>
<OPTIONS>
  <GROUP NAME="Log">
    <BOOL ID="LogKeepInSession" NAME="KeepInSession" VALUE="true"/>
    <BOOL ID="LogDocked" NAME="Docked" VALUE="true"/>
  </GROUP>
  <GROUP ID="Editor" NAME="Editor">
    <GROUP NAME="ErrorsList">
      <BOOL NAME="Errors" VALUE="true"/>
      <BOOL NAME="Warnings" VALUE="true"/>
      <BOOL NAME="Information" VALUE="true"/>
    </GROUP>
  </GROUP>
</OPTIONS>
)";

ComPtr<IDispatch> createParser() {
    ComPtr<IUnknown> parser;
    try {
        parser = createObject(L"Msxml2.DOMDocument.3.0");
    } catch (const Failure&) {
        parser = createObject(L"Msxml2.DOMDocument");
    }
    ComPtr<IDispatch> document;
    check(parser.As(&document), L"Asking the XML parser for automation");
    return document;
}

ComPtr<IDispatch> readOptions(const std::wstring& path) {
    const ComPtr<IDispatch> document = createParser();
    put(document.Get(), L"async", false);
    call(document.Get(), L"setProperty", {L"SelectionLanguage", L"XPath"});
    const bool exists = GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    const Variant read =
        exists ? call(document.Get(), L"load", {path}) : call(document.Get(), L"loadXML", {kDefaultOptions});
    if (!read.boolean()) {
        throw Failure(path + L": the file is not well-formed XML");
    }
    return document;
}

} // namespace

ComPtr<IDispatch> makeOptionsDocument(const std::wstring& path) {
    const ComPtr<IDispatch> document = readOptions(path);
    auto options = makeObject<ScriptObject>();
    options->member(L"selectSingleNode", [=](const Arguments& arguments) {
        return call(document.Get(), L"selectSingleNode", {arguments.value(0)});
    });
    // Kept by the object itself, so a plain pointer: a counted one would never let it go.
    options->member(L"Save", [=, self = options.Get()](const Arguments&) {
        call(document.Get(), L"save", {path});
        self->raise(kSaved);
        return Variant();
    });
    options->offerEvents(kOptionsEvents);
    return options;
}

} // namespace workbench
