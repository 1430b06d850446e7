#pragma once

// Shared with the resource script.
#define IDR_MAIN_MENU 100
#define IDM_REPLAY 101
#define IDM_EXIT 102
