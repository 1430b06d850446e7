#pragma once

#include <windows.h>

#include <ole2.h>

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace cvlog::tests {

/// A host object for tests: an IDispatch whose members are lambdas. Arguments come in call order; a by-reference one
/// is followed.
class ScriptedDispatch final : public IDispatch {
public:
    using Arguments = std::vector<VARIANT>;
    using Body = std::function<HRESULT(Arguments&, VARIANT*)>;

    static ScriptedDispatch* make() { return new ScriptedDispatch; }
    static int alive() { return alive_; }

    ScriptedDispatch& member(const wchar_t* name, Body body) {
        members_.emplace_back(name, std::move(body));
        return *this;
    }
    /// A member that sees the arguments as they come: last one first.
    using RawBody = std::function<HRESULT(DISPPARAMS&)>;
    ScriptedDispatch& raw(const wchar_t* name, RawBody body);
    /// The member answers with another body from now on.
    ScriptedDispatch& replace(const wchar_t* name, Body body);
    /// From now on the member fails: with what the function answers and writes.
    using Failure = std::function<HRESULT(EXCEPINFO*)>;
    ScriptedDispatch& fail(const wchar_t* name, Failure failure);
    ScriptedDispatch& text(const wchar_t* name, std::wstring value);
    ScriptedDispatch& number(const wchar_t* name, LONG value);
    /// Takes over the reference.
    ScriptedDispatch& object(const wchar_t* name, IDispatch* value);

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* info, UINT* bad) override;

private:
    ScriptedDispatch() { ++alive_; }
    ~ScriptedDispatch();
    DISPID idOfItem() const; // the default member

    static inline std::atomic<int> alive_{0};
    ULONG references_ = 1;
    std::vector<std::pair<std::wstring, Body>> members_;
    std::map<DISPID, RawBody> rawMembers_;
    std::vector<std::pair<std::wstring, Failure>> failures_;
    std::vector<IDispatch*> owned_;
};

void giveText(VARIANT* result, const std::wstring& value);
void giveObject(VARIANT* result, IDispatch* value);

/// A workspace with one method, one entity type and one object "O1", for a project folder. One reference.
ScriptedDispatch* makeWorkspace(const std::wstring& projectFolder);

} // namespace cvlog::tests
