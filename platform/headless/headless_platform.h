#pragma once

#include "platform/headless/call_gate.h"
#include "platform/headless/headless_clock.h"
#include "platform/headless/headless_code_page.h"
#include "platform/headless/headless_collator.h"
#include "platform/headless/headless_fonts.h"
#include "platform/headless/headless_message_filters.h"
#include "platform/headless/headless_objects.h"
#include "platform/headless/headless_peer_factory.h"
#include "platform/headless/headless_pictures.h"
#include "platform/headless/headless_screens.h"
#include "platform/headless/headless_text_measurer.h"
#include "platform/headless/memory_file_system.h"
#include "platform/headless/memory_settings.h"
#include "platform/headless/recording_clipboard.h"
#include "platform/headless/recording_help_viewer.h"
#include "platform/headless/recording_message_boxes.h"
#include "platform/headless/recording_window_messages.h"
#include "platform/headless/scripted_message_pump.h"
#include "resources/string_table.h"

namespace cvlog::platform::headless {

/// A whole platform without a screen. It outlives everything that is built on its services.
struct HeadlessPlatform {
    HeadlessPlatform() = default;
    HeadlessPlatform(const HeadlessPlatform&) = delete;
    HeadlessPlatform& operator=(const HeadlessPlatform&) = delete;

    CallGate gate;
    HeadlessClock clock;
    RecordingClipboard clipboard{gate};
    RecordingMessageBoxes messages{gate};
    MemoryFileSystem files{gate};
    MemorySettings settings{gate};
    HeadlessCollator collator;
    HeadlessTextMeasurer measurer;
    HeadlessScreens screens;
    HeadlessCodePage codePage{gate};
    ScriptedMessagePump pump{gate};
    HeadlessPictures pictures{gate, files};
    RecordingWindowMessages windowMessages{gate};
    HeadlessFonts fonts{gate};
    RecordingHelpViewer helpViewer{gate};
    HeadlessMessageFilters messageFilters{gate};
    HeadlessObjects objects{gate};
    HeadlessPeerFactory peers{gate};
    resources::Language language = resources::Language::English;
};

} // namespace cvlog::platform::headless
