#include "workbench/report/report_page.h"

#include <algorithm>
#include <map>

#include "workbench/text.h"

namespace workbench::report {

namespace {

struct OutcomeName {
    Outcome outcome;
    const wchar_t* icon;
    const wchar_t* word;
    const wchar_t* style;
};

constexpr OutcomeName kOutcomes[] = {
    {Outcome::kGood, L"Good", L"Success", L"good"},
    {Outcome::kSuspect, L"Suspect", L"Warnings", L"suspect"},
    {Outcome::kBad, L"Bad", L"Errors", L"bad"},
    {Outcome::kFailure, L"Failure", L"Failed", L"failure"},
    {Outcome::kCancel, L"Cancel", L"Canceled", L"cancel"},
    {Outcome::kSection, L"Session", L"", L"section"},
};

const OutcomeName* nameOf(Outcome outcome) {
    const auto found = std::find_if(std::begin(kOutcomes), std::end(kOutcomes),
                                    [&](const OutcomeName& name) { return name.outcome == outcome; });
    return found == std::end(kOutcomes) ? nullptr : found;
}

constexpr wchar_t kStyle[] = LR"(
:root { color-scheme: light dark; --ink: #1c2430; --soft: #5b6675; --line: #d9dee6; --paper: #fff; --band: #f3f5f9;
  --good: #1a7f37; --suspect: #9a6700; --bad: #c4320a; --failure: #b3122f; --cancel: #57606a; }
@media (prefers-color-scheme: dark) { :root { --ink: #e6e9ee; --soft: #9aa5b4; --line: #333c49; --paper: #14181f;
  --band: #1c222c; --good: #4ac26b; --suspect: #d4a72c; --bad: #f0883e; --failure: #ff7b88; --cancel: #9aa5b4; } }
body { margin: 2rem auto; max-width: 80rem; padding: 0 1.5rem; color: var(--ink); background: var(--paper);
  font: 14px/1.45 "Segoe UI", Tahoma, "Liberation Sans", sans-serif; }
h1 { margin: 0; font-size: 1.6rem; font-weight: 600; }
.made { margin: .2rem 0 1.2rem; color: var(--soft); }
.counts { display: flex; flex-wrap: wrap; gap: .6rem; margin: 0 0 1.4rem; padding: 0; list-style: none; }
.counts li { min-width: 6.5rem; padding: .5rem .9rem; border: 1px solid var(--line); border-left: 4px solid var(--tone, var(--soft));
  border-radius: 6px; background: var(--band); }
.counts b { display: block; font-size: 1.35rem; font-weight: 600; font-variant-numeric: tabular-nums; }
table { width: 100%; border-collapse: collapse; }
th { position: sticky; top: 0; padding: .45rem .7rem; text-align: left; font-weight: 600; background: var(--band);
  border-bottom: 2px solid var(--line); white-space: nowrap; }
td { padding: .35rem .7rem; vertical-align: top; border-bottom: 1px solid var(--line); overflow-wrap: break-word; white-space: pre-wrap; }
td:last-child { overflow-wrap: anywhere; }
td:nth-child(2):not(:last-child) { white-space: nowrap; }
td.outcome { white-space: nowrap; color: var(--tone); font-weight: 600; }
td.outcome::before { content: ""; display: inline-block; width: .6em; height: .6em; margin-right: .5em; border-radius: 50%;
  background: var(--tone); }
tr.detail td { color: var(--soft); border-bottom-style: dotted; }
tr.section td { padding: 1rem .7rem .35rem; font-weight: 600; border-bottom: 2px solid var(--ink); }
.kind { margin-right: .4em; padding: 0 .35em; border: 1px solid var(--line); border-radius: 4px; color: var(--soft);
  font-size: .8em; white-space: nowrap; }
.good { --tone: var(--good); } .suspect { --tone: var(--suspect); } .bad { --tone: var(--bad); }
.failure { --tone: var(--failure); } .cancel { --tone: var(--cancel); }
.empty { padding: 2rem; text-align: center; color: var(--soft); border: 1px dashed var(--line); border-radius: 6px; }
@page { size: landscape; margin: 15mm; }
@media print { :root { color-scheme: light; --ink: #000; --soft: #444; --line: #bbb; --paper: #fff; --band: #f3f3f3; }
  body { margin: 0; max-width: none; padding: 0; font-size: 9pt; } th { position: static; }
  thead { display: table-header-group; } tr, .counts { break-inside: avoid; }
  .counts li, th, td.outcome::before { print-color-adjust: exact; -webkit-print-color-adjust: exact; } }
)";

/// A section's text without the dashes that draw a line in a list.
std::wstring_view withoutDashes(std::wstring_view text) {
    const size_t first = text.find_first_not_of(L"- ");
    if (first == std::wstring_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(L"- ") - first + 1);
}

void appendCounts(std::wstring& page, const Table& table) {
    std::map<Outcome, size_t> counts;
    size_t entries = 0;
    for (const Line& line : table.lines) {
        if (line.isDetail || line.outcome == Outcome::kSection) {
            continue;
        }
        ++entries;
        ++counts[line.outcome];
    }
    page += L"<ul class=\"counts\">\n<li><b>" + std::to_wstring(entries) + L"</b>Entries</li>\n";
    for (const OutcomeName& name : kOutcomes) {
        if (const size_t count = counts[name.outcome]) {
            page += std::wstring(L"<li class=\"") + name.style + L"\"><b>" + std::to_wstring(count) +
                    L"</b>" + name.word + L"</li>\n";
        }
    }
    page += L"</ul>\n";
}

void appendLine(std::wstring& page, const Line& line, size_t columns) {
    const OutcomeName* name = nameOf(line.outcome);
    if (line.outcome == Outcome::kSection) {
        const std::wstring_view text = line.cells.empty() ? std::wstring_view() : line.cells.front().text;
        page += L"<tr class=\"section\"><td colspan=\"" + std::to_wstring(columns + 1) + L"\">" +
                escaped(withoutDashes(text)) + L"</td></tr>\n";
        return;
    }
    std::wstring style = name ? name->style : L"";
    if (line.isDetail) {
        style += style.empty() ? L"detail" : L" detail";
    }
    page += style.empty() ? std::wstring(L"<tr>") : L"<tr class=\"" + style + L"\">";
    page +=
        name ? std::wstring(L"<td class=\"outcome\">") + name->word + L"</td>" : std::wstring(L"<td></td>");
    for (const Cell& cell : line.cells) {
        page += L"<td>";
        if (!cell.kind.empty()) {
            page += L"<span class=\"kind\">" + escaped(cell.kind) + L"</span>";
        }
        page += escaped(cell.text) + L"</td>";
    }
    page += L"</tr>\n";
}

} // namespace

Outcome outcomeOf(std::wstring_view icon) {
    const auto found = std::find_if(std::begin(kOutcomes), std::end(kOutcomes),
                                    [&](const OutcomeName& name) { return sameName(name.icon, icon); });
    return found == std::end(kOutcomes) ? Outcome::kNone : found->outcome;
}

const wchar_t* wordOf(Outcome outcome) {
    const OutcomeName* name = nameOf(outcome);
    return name ? name->word : L"";
}

std::wstring escaped(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size());
    for (const wchar_t unit : text) {
        switch (unit) {
        case L'&':
            result += L"&amp;";
            break;
        case L'<':
            result += L"&lt;";
            break;
        case L'>':
            result += L"&gt;";
            break;
        case L'"':
            result += L"&quot;";
            break;
        case L'\'':
            result += L"&#39;";
            break;
        default: // other control characters have no place in a page
            result += unit < 0x20 && unit != L'\n' && unit != L'\t' ? L' ' : unit;
        }
    }
    return result;
}

std::wstring makePage(const Table& table) {
    std::wstring page = L"<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n"
                        L"<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
                        escaped(table.title) + L"</title>\n<style>" + kStyle +
                        L"</style>\n</head>\n<body>\n<h1>" + escaped(table.title) +
                        L"</h1>\n<p class=\"made\">" + escaped(table.made) + L"</p>\n";
    appendCounts(page, table);
    if (table.lines.empty()) {
        return page + L"<p class=\"empty\">There are no entries.</p>\n</body>\n</html>\n";
    }
    page += L"<table>\n<thead><tr><th>Outcome</th>";
    for (const std::wstring& column : table.columns) {
        page += L"<th>" + escaped(column) + L"</th>";
    }
    page += L"</tr></thead>\n<tbody>\n";
    for (const Line& line : table.lines) {
        appendLine(page, line, table.columns.size());
    }
    return page + L"</tbody>\n</table>\n</body>\n</html>\n";
}

} // namespace workbench::report
