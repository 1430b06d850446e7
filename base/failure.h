#pragma once

#include <exception>
#include <utility>

// A failure is an exception. A routine treats one in exactly three ways: it aborts with a false or empty result, it
// ignores the failure and goes on with the next statement, or it lets the failure reach its caller (no code at all).

namespace cvlog::base {

/// Runs one statement and drops its failure. Answers whether the statement succeeded.
template <class Statement>
bool ignoring(Statement&& statement) noexcept {
    try {
        std::forward<Statement>(statement)();
        return true;
    } catch (...) {
        return false;
    }
}

/// Evaluates an expression; a failure gives `fallback` instead.
template <class Expression, class Result>
Result valueOr(Result fallback, Expression&& expression) noexcept {
    try {
        return std::forward<Expression>(expression)();
    } catch (...) {
        return fallback;
    }
}

/// Runs an action when the scope ends, on every path.
template <class Action>
class ScopeExit {
public:
    explicit ScopeExit(Action action) : action_(std::move(action)) {}
    ~ScopeExit() { ignoring(action_); }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

private:
    Action action_;
};

} // namespace cvlog::base
