#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace cvlog::automation {

/// A failed late-bound call: the automation error code with the source and the description that the failing object
/// gave. It travels unchanged from a host object to the caller of the routine that made the call.
class AutomationError : public std::exception {
public:
    explicit AutomationError(std::int32_t code, std::u16string_view description = {},
                             std::u16string_view source = {});

    std::int32_t code() const noexcept { return code_; }
    const std::u16string& source() const noexcept { return source_; }
    const std::u16string& description() const noexcept { return description_; }
    const char* what() const noexcept override { return what_.c_str(); }

private:
    std::int32_t code_;
    std::u16string source_;
    std::u16string description_;
    std::string what_;
};

/// A call whose arguments do not fit the member: nothing of the member has run.
class ArgumentError : public AutomationError {
public:
    ArgumentError(const AutomationError& problem, std::size_t parameter)
        : AutomationError(problem.code(), problem.description(), problem.source()), parameter_(parameter) {}
    /// The position of the parameter, from 0.
    std::size_t parameter() const noexcept { return parameter_; }

private:
    std::size_t parameter_;
};

/// Codes as automation clients know them (HRESULT values).
namespace code {
constexpr std::int32_t of(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }
inline constexpr std::int32_t kMemberNotFound = of(0x80020003);
inline constexpr std::int32_t kParameterNotFound = of(0x80020004);
inline constexpr std::int32_t kTypeMismatch = of(0x80020005);
inline constexpr std::int32_t kUnknownName = of(0x80020006);
inline constexpr std::int32_t kNoNamedArguments = of(0x80020007);
inline constexpr std::int32_t kException = of(0x80020009);
inline constexpr std::int32_t kOverflow = of(0x8002000A);
inline constexpr std::int32_t kBadParameterCount = of(0x8002000E);
inline constexpr std::int32_t kParameterNotOptional = of(0x8002000F);
inline constexpr std::int32_t kFailure = of(0x80004005);
inline constexpr std::int32_t kOutOfMemory = of(0x8007000E);
inline constexpr std::int32_t kDamagedStorage = of(0x80030109);
inline constexpr std::int32_t kNoConnection = of(0x80040200);
/// Run-time errors of the classic automation hosts: facility 10, the decimal error number below.
inline constexpr std::int32_t kObjectRequired = of(0x800A01A8);           // 424
inline constexpr std::int32_t kSetNotSupportedAtRunTime = of(0x800A017E); // 382
inline constexpr std::int32_t kSetNotPermitted = of(0x800A0183);          // 387
inline constexpr std::int32_t kInvalidPropertyValue = of(0x800A017C);     // 380
inline constexpr std::int32_t kControlNotFound = of(0x800A02DA);          // 730
inline constexpr std::int32_t kNoArrayElement = of(0x800A0154);           // 340
inline constexpr std::int32_t kNotAnArray = of(0x800A0157);               // 343
/// What lists and their collections raise.
inline constexpr std::int32_t kIndexOutOfBounds = of(0x800A8B10); // 35600
inline constexpr std::int32_t kElementNotFound = of(0x800A8B11);  // 35601
inline constexpr std::int32_t kKeyNotUnique = of(0x800A8B12);     // 35602
inline constexpr std::int32_t kElementGone = of(0x800A8B15);      // 35605
} // namespace code

} // namespace cvlog::automation
