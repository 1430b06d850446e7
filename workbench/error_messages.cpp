#include "workbench/error_messages.h"

#include <algorithm>

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/table.h"
#include "workbench/text.h"
#include "workbench/xml_attribute.h"

namespace workbench {

namespace {

bool isSeparator(wchar_t unit) { return unit == L' ' || unit == L'\t'; }

std::wstring_view trimmed(std::wstring_view text) {
    while (!text.empty() && text.front() == L' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == L' ') {
        text.remove_suffix(1);
    }
    return text;
}

std::wstring cleaned(std::wstring_view text) {
    std::wstring result(text);
    std::replace_if(
        result.begin(), result.end(), [](wchar_t unit) { return unit < L' '; }, L' ');
    return std::wstring(trimmed(result));
}

/// Takes the next field off `rest`: quotes group blanks and are dropped wherever they stand.
std::wstring takeField(std::wstring_view& rest) {
    std::wstring field;
    bool quoted = false;
    size_t at = 0;
    for (; at < rest.size() && (quoted || !isSeparator(rest[at])); ++at) {
        if (rest[at] == L'"') {
            quoted = !quoted;
        } else {
            field += rest[at];
        }
    }
    rest.remove_prefix(at);
    return field;
}

void skipSeparators(std::wstring_view& rest) {
    while (!rest.empty() && isSeparator(rest.front())) {
        rest.remove_prefix(1);
    }
}

std::wstring fromAnsi(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    std::wstring text(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), static_cast<int>(text.size()));
    return text;
}

} // namespace

ErrorMessage parseErrorMessage(std::wstring_view line) {
    ErrorMessage message;
    std::wstring_view rest = trimmed(line);
    if (rest.starts_with(L'"')) {
        for (std::wstring* field : {&message.type, &message.object, &message.line, &message.column,
                                    &message.severity, &message.code}) {
            skipSeparators(rest);
            *field = takeField(rest);
        }
        skipSeparators(rest);
        if (rest.starts_with(L'"')) {
            rest.remove_prefix(1); // begins a field that is none
        }
    }
    message.text = cleaned(rest);
    return message;
}

HiddenKinds::HiddenKinds(IDispatch* options) {
    const wchar_t* const query = L"//*[@ID='Editor']/GROUP[@NAME='ErrorsList']/BOOL";
    auto node = call(options, L"selectSingleNode", {query}).object();
    while (node) {
        const std::wstring name = attribute(node.Get(), L"NAME");
        if (!name.empty()) {
            kinds_.push_back({name.front(), sameName(attribute(node.Get(), L"VALUE"), L"false")});
        }
        node = get(node.Get(), L"nextSibling").object();
    }
}

bool HiddenKinds::hidesKind(wchar_t kind) const {
    const auto found = std::find_if(kinds_.begin(), kinds_.end(), [&](const Kind& known) {
        return sameName({&known.letter, 1}, {&kind, 1});
    });
    return found != kinds_.end() && found->hidden; // the first of several with one letter counts
}

bool HiddenKinds::hides(std::wstring_view code) const {
    return !code.empty() && (hidesKind(code.front()) || hidesKind(code.back()) ||
                             (code.size() > 1 && hidesKind(code[code.size() - 2])));
}

ErrorMessages::ErrorMessages(const std::wstring& path, const HiddenKinds& hidden) : bytes_(readFile(path)) {
    for (size_t start = 0; start < bytes_.size();) {
        const size_t end = std::min(bytes_.find('\n', start), bytes_.size());
        take(start, end, hidden);
        start = end + 1;
    }
}

void ErrorMessages::take(size_t start, size_t end, const HiddenKinds& hidden) {
    if (end > start && bytes_[end - 1] == '\r') {
        --end;
    }
    const std::wstring text = fromAnsi({bytes_.data() + start, end - start});
    if (trimmed(text).empty()) {
        return;
    }
    const ErrorMessage message = parseErrorMessage(text);
    if (hidden.hides(message.code)) {
        ++hiddenCount_;
        return;
    }
    lines_.push_back({start, end - start});
    errorCount_ += sameName(message.severity, L"Error");
    warningCount_ += sameName(message.severity, L"Warning");
}

ErrorMessage ErrorMessages::at(size_t index) const {
    const Line& line = lines_.at(index);
    return parseErrorMessage(fromAnsi({bytes_.data() + line.start, line.length}));
}

} // namespace workbench
