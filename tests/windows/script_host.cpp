#include "tests/windows/script_host.h"

#include <cwchar>

namespace cvlog::tests {

void giveText(VARIANT* result, const std::wstring& value) {
    result->vt = VT_BSTR;
    result->bstrVal = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
}

void giveObject(VARIANT* result, IDispatch* value) {
    result->vt = VT_DISPATCH;
    result->pdispVal = value;
    if (value) value->AddRef();
}

ScriptedDispatch& ScriptedDispatch::text(const wchar_t* name, std::wstring value) {
    return member(name, [value = std::move(value)](Arguments&, VARIANT* result) {
        giveText(result, value);
        return S_OK;
    });
}

ScriptedDispatch& ScriptedDispatch::number(const wchar_t* name, LONG value) {
    return member(name, [value](Arguments&, VARIANT* result) {
        result->vt = VT_I4;
        result->lVal = value;
        return S_OK;
    });
}

ScriptedDispatch& ScriptedDispatch::object(const wchar_t* name, IDispatch* value) {
    owned_.push_back(value);
    return member(name, [value](Arguments&, VARIANT* result) {
        giveObject(result, value);
        return S_OK;
    });
}

ScriptedDispatch& ScriptedDispatch::raw(const wchar_t* name, RawBody body) {
    member(name, nullptr);
    rawMembers_[static_cast<DISPID>(members_.size())] = std::move(body);
    return *this;
}

ScriptedDispatch& ScriptedDispatch::replace(const wchar_t* name, Body body) {
    for (auto& [known, own] : members_)
        if (known == name) own = body;
    return *this;
}

ScriptedDispatch& ScriptedDispatch::fail(const wchar_t* name, Failure failure) {
    failures_.emplace_back(name, std::move(failure));
    return *this;
}

ScriptedDispatch::~ScriptedDispatch() {
    for (IDispatch* object : owned_) object->Release();
    --alive_;
}

STDMETHODIMP ScriptedDispatch::QueryInterface(REFIID id, void** result) {
    const bool known = id == IID_IUnknown || id == IID_IDispatch;
    *result = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) ScriptedDispatch::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP ScriptedDispatch::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    for (std::size_t i = 0; i < members_.size() && count == 1; ++i) {
        if (_wcsicmp(members_[i].first.c_str(), names[0]) == 0) {
            ids[0] = static_cast<DISPID>(i) + 1;
            return S_OK;
        }
    }
    ids[0] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
}

DISPID ScriptedDispatch::idOfItem() const {
    for (std::size_t i = 0; i < members_.size(); ++i)
        if (members_[i].first == L"Item") return static_cast<DISPID>(i) + 1;
    return DISPID_UNKNOWN;
}

STDMETHODIMP ScriptedDispatch::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                      EXCEPINFO* info, UINT*) {
    if (id == DISPID_VALUE) id = idOfItem();
    if (id < 1 || static_cast<std::size_t>(id) > members_.size()) return DISP_E_MEMBERNOTFOUND;
    for (const auto& [name, failure] : failures_)
        if (name == members_[static_cast<std::size_t>(id) - 1].first) return failure(info);
    if (const auto found = rawMembers_.find(id); found != rawMembers_.end())
        return found->second(*parameters);
    Arguments arguments(parameters->cArgs);
    for (UINT i = 0; i < parameters->cArgs; ++i) {
        VariantInit(&arguments[i]);
        VariantCopyInd(&arguments[i], &parameters->rgvarg[parameters->cArgs - 1 - i]);
    }
    VARIANT answer;
    VariantInit(&answer);
    const HRESULT outcome = members_[static_cast<std::size_t>(id) - 1].second(arguments, &answer);
    for (VARIANT& argument : arguments) VariantClear(&argument);
    if (result)
        *result = answer;
    else
        VariantClear(&answer);
    return outcome;
}

namespace {

bool is(const VARIANT& value, const wchar_t* text) {
    return value.vt == VT_BSTR && value.bstrVal && std::wcscmp(value.bstrVal, text) == 0;
}

IDispatch* makeEntityType() {
    return &ScriptedDispatch::make()
                ->number(L"ID", 1)
                .number(L"Flags", 1)
                .text(L"DisplayName", L"Program")
                .text(L"KeyName", L"PROGRAM")
                .text(L"IconFile", L"program.png")
                .text(L"KeyProperty", L"Name");
}

IDispatch* makeRepository(IDispatch* entity, IDispatch* object) {
    auto* entities = ScriptedDispatch::make();
    entities->number(L"Count", 1).object(L"Item", (entity->AddRef(), entity));
    auto* erd = ScriptedDispatch::make();
    erd->object(L"Entities", entities).object(L"EntityFlags", &ScriptedDispatch::make()->number(L"Value", 8));
    auto* repository = ScriptedDispatch::make();
    repository->object(L"ERD", erd)
        .member(L"object", [object](ScriptedDispatch::Arguments& a, VARIANT* result) {
            if (a.size() == 1 && is(a[0], L"O1")) giveObject(result, object);
            return S_OK;
        });
    return repository;
}

} // namespace

ScriptedDispatch* makeWorkspace(const std::wstring& projectFolder) {
    IDispatch* entity = makeEntityType();
    auto* object = ScriptedDispatch::make();
    object->text(L"ID", L"O1")
        .text(L"Name", L"PAYROLL")
        .text(L"DisplayName", L"Payroll")
        .text(L"Property", L"PAYROLL");
    object->object(L"EntityType", (entity->AddRef(), entity));
    auto* methods = ScriptedDispatch::make();
    auto* verify = ScriptedDispatch::make();
    verify->text(L"DisplayName", L"Verify").text(L"AliasID", L"");
    methods->object(L"Verify", verify)
        .member(L"Item", [verify](ScriptedDispatch::Arguments& a, VARIANT* result) {
            if (a.size() == 1 && is(a[0], L"verify")) giveObject(result, verify);
            return S_OK;
        });
    auto* options = ScriptedDispatch::make();
    options->member(L"selectSingleNode", [](ScriptedDispatch::Arguments&, VARIANT*) { return S_OK; });
    auto* tools = ScriptedDispatch::make();
    tools->number(L"Count", 1);

    auto* workspace = ScriptedDispatch::make();
    workspace->object(L"UserOptions", options)
        .object(L"Repository", makeRepository(entity, object))
        .object(L"ProjectObject", object)
        .object(L"Methods", methods)
        .object(L"ActiveToolList", tools)
        .text(L"GetProductInfo", L"CVLog3 Tests")
        .text(L"GetHelpFile", L"C:\\Help\\Calvetta.hlp")
        .member(L"GetCalvettaName", [projectFolder](ScriptedDispatch::Arguments&, VARIANT* result) {
            giveText(result, projectFolder);
            return S_OK;
        });
    workspace->member(L"TranslateReturnCode", [](ScriptedDispatch::Arguments& a, VARIANT* result) {
        giveText(result, L"RC " + std::to_wstring(a.at(0).lVal));
        return S_OK;
    });
    entity->Release();
    return workspace;
}

} // namespace cvlog::tests
