#pragma once

#include "com/com_ptr.h"
#include "com/guids.h"

#include <windows.h>

#include <ole2.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace cvlog::tests {

using com::ComPtr;

/// A VARIANT that frees itself.
struct Variant : VARIANT {
    Variant() { VariantInit(this); }
    explicit Variant(LONG number) : Variant() { vt = VT_I4, lVal = number; }
    explicit Variant(const wchar_t* text) : Variant() { vt = VT_BSTR, bstrVal = SysAllocString(text); }
    Variant(const Variant& other) : Variant() { VariantCopy(this, const_cast<Variant*>(&other)); }
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
};

/// The folder of the test program, where the library and its manifest lie.
std::wstring binFolder();

/// A new folder below the temporary one, with a project database of the kind that hosts make; both go with it.
class ProjectFolder {
public:
    ProjectFolder();
    ~ProjectFolder();
    ProjectFolder(const ProjectFolder&) = delete;
    ProjectFolder& operator=(const ProjectFolder&) = delete;

    const std::wstring& path() const { return path_; }

private:
    std::wstring path_;
};

/// Calls a member by name. Arguments in call order. Fails the test when the name is unknown.
HRESULT callByName(IDispatch* object, const wchar_t* name, WORD flags,
                   std::initializer_list<Variant> arguments, VARIANT* result = nullptr);

/// An apartment in which the component's classes can be created without registration.
class ComTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    ComPtr<IDispatch> create(const wchar_t* progId);
    /// OpenDB on a workspace for the folder; true when the log says so.
    bool openDb(IDispatch* log, IDispatch* workspace);

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
};

} // namespace cvlog::tests
