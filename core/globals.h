#pragma once

#include "automation/object.h"
#include "base/date_time.h"
#include "core/errors_list_filter.h"
#include "core/log_templates.h"
#include "core/log_views.h"
#include "core/series.h"
#include "hostapi/options_document.h"
#include "hostapi/repository.h"
#include "hostapi/workspace.h"
#include "ports/clipboard.h"
#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/collator.h"
#include "ports/file_reader.h"
#include "ports/file_system.h"
#include "ports/fonts.h"
#include "ports/help_viewer.h"
#include "ports/message_boxes.h"
#include "ports/message_filter.h"
#include "ports/message_pump.h"
#include "ports/object_factory.h"
#include "ports/pictures.h"
#include "ports/screens.h"
#include "ports/settings_store.h"
#include "ports/text_measurer.h"
#include "ports/window_messages.h"
#include "resources/string_table.h"
#include "store/engine.h"
#include "widgets/image_list.h"
#include "widgets/peer_factory.h"
#include "widgets/timer.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace cvlog::host {
class FrmLog;
}

namespace cvlog::details {
class FrmCancel;
}

namespace cvlog::store {
class FrmLogHistory;
}

namespace cvlog::core {

class CVLog;

/// What the component needs of the system it runs on. Nothing here is owned; all of it outlives the Globals.
struct Platform {
    ports::Clipboard& clipboard;
    ports::Clock& clock;
    ports::MessageBoxes& messages;
    ports::FileSystem& files;
    ports::FileReader& reader;
    ports::CodePage& codePage;
    ports::MessagePump& pump;
    ports::SettingsStore& settings;
    ports::Collator& collator;
    ports::TextMeasurer& measurer;
    ports::Pictures& pictures;
    ports::Screens& screens;
    ports::WindowMessages& windowMessages;
    ports::Fonts& fonts;
    ports::ObjectFactory& objects;
    ports::HelpViewer& helpViewer;
    ports::MessageFilters& messageFilters;
    widgets::PeerFactory& peers;
    store::Engine& engine;
    resources::Language language;

    /// The services of a body, which names them as here.
    template <class Services>
    static Platform of(Services& services, store::Engine& engine) {
        return {
            .clipboard = services.clipboard,
            .clock = services.clock,
            .messages = services.messages,
            .files = services.files,
            .reader = services.files,
            .codePage = services.codePage,
            .pump = services.pump,
            .settings = services.settings,
            .collator = services.collator,
            .measurer = services.measurer,
            .pictures = services.pictures,
            .screens = services.screens,
            .windowMessages = services.windowMessages,
            .fonts = services.fonts,
            .objects = services.objects,
            .helpViewer = services.helpViewer,
            .messageFilters = services.messageFilters,
            .peers = services.peers,
            .engine = engine,
            .language = services.language,
        };
    }
};

/// What the host's options say.
struct OptionState {
    hostapi::OptionsDocument UserOptions;
    bool KeepInSession = false;
    bool DockedOption = false;
    core::ErrorsListFilter ErrorsListFilter;
    /// The last reload changed the filter.
    bool FilterChanged = false;
    /// The filter has changed since open entries were last shown by it.
    bool entriesOutdated = false;
    /// Hears when the user's options were saved; ends with the database.
    std::unique_ptr<automation::Connection> savedEvents;
    /// Applies changed options outside of the host's event; null until it was first needed.
    std::unique_ptr<widgets::Timer> applyTimer;
};

struct StoreState {
    hostapi::Workspace Workspace; // none when closed
    std::shared_ptr<store::Database> LogDatabase;
    std::shared_ptr<store::Recordset> LogRecordset;
    std::int32_t LastRecordNum = 0;
    /// The log object that last opened the database.
    std::shared_ptr<CVLog> CurrentLog;
    std::u16string IconsDir;
    std::u16string HelpFile;
    std::shared_ptr<store::FrmLogHistory> frmLogHistory; // null while it is not loaded
};

/// Where the log is shown.
struct PlacementState {
    automation::ObjectRef Parent;         // the host's container, none when the log is not docked anywhere
    std::shared_ptr<host::FrmLog> frmLog; // the floating window; null while it is closed
};

/// What was chosen from a log's menu, from its click until the next menu is prepared. All controls share it.
struct CommandState {
    std::u16string PendingCommand;
    std::int16_t PendingColumnIndex = 0;
};

/// F1 while a menu is open.
struct MenuHelpState {
    std::unique_ptr<ports::MessageFilter> MenuHelpHook; // null when none is installed
    bool MenuHelpShown = false;                         // F1 was handled in this menu
    std::u16string MenuHelpContext;                     // decimal
};

/// What the hidden resource form holds for all lists.
struct LogResources {
    static constexpr std::u16string_view kCaption = u"Calvetta Activity Log Resources";

    std::shared_ptr<widgets::ImageList> ilLog;
    std::shared_ptr<widgets::ImageList> ilSort;
    automation::ObjectRef Font;     // none until it is first asked for
    hostapi::Repository Repository; // whose changes are followed; none while closed
    std::unique_ptr<automation::Connection> repositoryEvents;
    LogTemplates templates;
};

/// The state that all objects of one apartment share. Passed by reference; there is no other mutable state.
struct Globals {
    explicit Globals(const Platform& services) : platform(services) {}
    Globals(const Globals&) = delete;
    Globals& operator=(const Globals&) = delete;

    /// Keeps this state and the platform below it alive while the reference is held: for windows and for code that
    /// runs outside of any call of the host.
    std::shared_ptr<void> hold() const { return holder ? holder() : nullptr; }

    Platform platform;
    std::function<std::shared_ptr<void>()> holder; // set by whoever owns this state
    core::LogViews LogViews; // goes after all that may hold a control, which leaves it in its end
    CommandState commands;
    MenuHelpState menuHelp; // goes after the logs, which remove it in their end
    Series series;
    base::LocalTime LastEntryTime;
    bool LogWindowVisible = false;
    PlacementState placement;
    bool ExpansionBusy = false;
    std::shared_ptr<details::FrmCancel> frmCancel; // over the list during a long expansion, else null
    OptionState options;
    StoreState store;
    std::unique_ptr<LogResources> frmLogResources; // null while unloaded
};

} // namespace cvlog::core
