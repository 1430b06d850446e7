#pragma once

#include "platform/win32/clipboard.h"
#include "platform/win32/clock.h"
#include "platform/win32/code_page.h"
#include "platform/win32/collator.h"
#include "platform/win32/file_system.h"
#include "platform/win32/help_viewer.h"
#include "platform/win32/host_window.h"
#include "platform/win32/message_boxes.h"
#include "platform/win32/message_filters.h"
#include "platform/win32/message_pump.h"
#include "platform/win32/module.h"
#include "platform/win32/peer_factory.h"
#include "platform/win32/pictures.h"
#include "platform/win32/screens.h"
#include "platform/win32/settings_store.h"
#include "platform/win32/text_measurer.h"
#include "platform/win32/user_language.h"
#include "platform/win32/window_messages.h"

namespace cvlog::platform::win32 {

/// What Windows gives the component, for one apartment: made, used and destroyed on its thread, and destroyed
/// after everything that uses it.
struct Services {
    HostWindow host;
    Clipboard clipboard;
    Clock clock;
    MessageBoxes messages;
    FileSystem files;
    SettingsStore settings;
    Collator collator;
    TextMeasurer measurer;
    Screens screens;
    CodePage codePage;
    MessagePump pump;
    Pictures pictures{thisModule()};
    WindowMessages windowMessages;
    HelpViewer helpViewer;
    MessageFilters messageFilters;
    PeerFactory peers{host};
    resources::Language language = userLanguage();
};

} // namespace cvlog::platform::win32
