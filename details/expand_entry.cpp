#include "details/expand_entry.h"

#include "base/failure.h"
#include "core/column_fit.h"
#include "core/log_row_kind.h"
#include "details/busy.h"
#include "details/child_rows.h"
#include "details/error_row.h"
#include "details/errors_file.h"
#include "details/frm_cancel.h"
#include "details/frozen_owner.h"
#include "resources/form_layouts.h"

namespace cvlog::details {

namespace {

using widgets::Activation;

constexpr std::u16string_view kMessage = u"Message";
constexpr int kRowsToCheckpoint = 50;
constexpr int kRowsToNextFrame = 20;

/// The reading of one errors file into the lists.
class Expansion {
public:
    Expansion(core::Globals& globals, core::LogViews::ListRef view, int position, const ExpandedEntry& entry,
              FrozenOwner& owner, Activation focus)
        : globals_(globals), view_(std::move(view)), owner_(owner), focus_(focus), busy_(globals),
          rows_(globals, entry), children_(globals, view_, position) {
        for (const auto& list : globals_.LogViews.all()) list->setSorted(false);
        owner_.freeze();
    }
    ~Expansion() {
        if (dialog_) dialog_->unload();
    }
    Expansion(const Expansion&) = delete;
    Expansion& operator=(const Expansion&) = delete;

    void read(ErrorsFile& file);
    void finish();

private:
    bool take(std::span<char> line);
    bool checkpoint(widgets::RowPtr row);
    bool goOnAfterInput();
    bool yield();
    void showDialog();
    base::Area dialogPlace();

    core::Globals& globals_;
    core::LogViews::ListRef view_;
    FrozenOwner& owner_;
    Activation focus_;
    std::optional<Busy> busy_;
    ErrorRows rows_;
    ChildRows children_;
    std::shared_ptr<FrmCancel> dialog_; // null until it is shown
    int n_ = 0;                         // rows that are shown
    bool hidden_ = false;               // lines were left out
};

void Expansion::read(ErrorsFile& file) {
    try {
        for (std::span<char> line; file.nextLine(line);) {
            line = TrimBlanks(line);
            if (!line.empty() && !take(line)) break;
            if (globals_.platform.pump.inputWaiting() && !goOnAfterInput()) break;
            if (n_ % kRowsToNextFrame == 0 && dialog_) base::ignoring([&] { dialog_->ShowNextFrame(); });
        }
        children_.flush();
    } catch (...) {
        // Without the entry there is nothing to tell anybody: whatever took it, the database perhaps, is why.
        if (children_.entryPosition() == 0) return;
        children_.copyLast();
        children_.flush();
        throw;
    }
}

// False when the expansion is to stop.
bool Expansion::take(std::span<char> line) {
    widgets::RowPtr row = rows_.FillErrorRow(line, n_ + 1);
    if (!row) {
        hidden_ = true;
        return true;
    }
    ++n_;
    if (n_ % kRowsToCheckpoint == 0) return checkpoint(std::move(row));
    children_.add(std::move(row));
    return true;
}

bool Expansion::checkpoint(widgets::RowPtr row) {
    std::optional<widgets::ListView::Batch> together(*view_); // the window shows all of it at once
    children_.addToView(std::move(row));
    view_->repaint();
    if (!dialog_) {
        together.reset();
        showDialog();
    }
    if (const int last = children_.lastPosition()) view_->scrollTo(last);
    together.reset();
    const bool goOn = yield();
    if (goOn)
        children_.copyLast();
    else
        children_.leaveLast();
    return goOn;
}

bool Expansion::goOnAfterInput() {
    children_.flush();
    const bool goOn = yield();
    if (!goOn) hidden_ = true;
    return goOn;
}

// Runs whatever waits. False when the expansion is to stop.
bool Expansion::yield() {
    rows_.forget(); // also the host's objects: it may close its repository meanwhile
    const bool programGoesOn = globals_.platform.pump.yield();
    owner_.showBusy();
    if (children_.entryPosition() == 0) return false;
    const bool cancelled = dialog_ && (dialog_->Cancelled() || !dialog_->isLoaded());
    return programGoesOn && !cancelled;
}

base::Area Expansion::dialogPlace() {
    ports::Screens& screens = globals_.platform.screens;
    const base::Area list = screens.windowArea(view_->windowHandle());
    return {list.left, list.top, list.width - screens.scrollBarWidth(), resources::CancelLayout::kHeight};
}

void Expansion::showDialog() {
    if (dialog_) return;
    std::shared_ptr<FrmCancel> dialog;
    const bool shown = base::ignoring([&] {
        dialog = FrmCancel::load(globals_);
        dialog->move(dialogPlace());
        dialog->show(view_->windowHandle(), focus_);
    });
    if (shown)
        dialog_ = std::move(dialog);
    else if (dialog)
        dialog->unload();
}

void Expansion::finish() {
    if (dialog_) dialog_->unload();
    busy_.reset();
    if (children_.entryPosition() == 0) return children_.removeOrphans();
    if (hidden_) {
        children_.add(rows_.hiddenRecordsRow());
        children_.flush();
    }
    if (const int last = children_.lastPosition()) view_->scrollTo(last);
    if (const int entry = children_.entryPosition()) view_->scrollTo(entry);
}

std::unique_ptr<ports::OpenFile> openErrorsFile(core::Globals& globals, widgets::ListView& view, int position,
                                                const std::u16string& path) {
    std::unique_ptr<ports::OpenFile> file;
    if (path.empty()) return file;
    if (globals.platform.files.fileExists(path))
        base::ignoring([&] { file = globals.platform.reader.open(path); });
    else
        view.setCellTag(position, kMessage, {});
    return file;
}

ExpandedEntry entryOf(const widgets::RowContent& row) {
    return {std::u16string(row.tag()), std::u16string(row.cellTag(row.cellOf(kMessage)))};
}

void showMessages(core::Globals& globals, const core::LogViews::ListRef& view, int position,
                  FrozenOwner& owner, std::optional<ErrorsFile>& file, Activation focus) {
    const ExpandedEntry entry = entryOf(view->row(position));
    std::unique_ptr<ports::OpenFile> opened = openErrorsFile(globals, *view, position, entry.path);
    if (!opened) return;
    file.emplace(std::move(opened));
    Expansion expansion(globals, view, position, entry, owner, focus);
    expansion.read(*file);
    expansion.finish();
}

} // namespace

void ExpandEntry(core::Globals& globals, const core::LogViews::ListRef& view, int position,
                 Activation focus) {
    if (globals.ExpansionBusy) return;
    const auto keep = globals.hold();
    const core::LogViews::ListRef list = view;
    const widgets::RowId entry = list->idAt(position);
    const LogOwner window = LogOwner::find(globals); // the host may do anything meanwhile
    const int now = list->positionOf(entry, position);
    if (now == 0 || globals.ExpansionBusy || core::IsExpanded(*list, now)) return;
    {
        std::optional<ErrorsFile> file; // released when the window has its input again
        FrozenOwner owner(window);
        showMessages(globals, list, now, owner, file, focus);
        // Once for each list, and always this one: its columns are the ones that fit all rows.
        for (int each = globals.LogViews.count(); each > 0; --each) core::AutoSizeColumns(*list, 0);
    }
    if (focus == Activation::Take) base::ignoring([&] { list->takeFocus(); });
}

} // namespace cvlog::details
