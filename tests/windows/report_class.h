#pragma once

#include "tests/windows/com_test.h"

#include <functional>
#include <string>

namespace cvlog::tests {

/// The variable that tells the sample generator to show nothing.
inline constexpr wchar_t kUnattended[] = L"TLREPORT_UNATTENDED";

/// The class that the log has its reports made by, registered until the end of the scope. A system has one: programs
/// that register it take turns.
class ReportClass {
public:
    using Make = std::function<ComPtr<IDispatch>()>;

    /// The sample generator in its library.
    ReportClass();
    /// A class of this process.
    explicit ReportClass(Make make);
    ~ReportClass();
    ReportClass(const ReportClass&) = delete;
    ReportClass& operator=(const ReportClass&) = delete;

private:
    void registerAs(const CLSID& id);

    HANDLE turn_;
    std::wstring classKey_; // empty for a class of this process
    DWORD cookie_ = 0;
};

} // namespace cvlog::tests
