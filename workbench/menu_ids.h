#pragma once

// Shared with the resource script.
#define IDR_MAIN_MENU 100
#define IDR_ACCELERATORS 101
#define IDD_OPTIONS 102
#define IDD_LINES 103
#define IDI_WORKBENCH 1 // the lowest: the program's own

#define IDM_REPLAY 201
#define IDM_OPTIONS 202
#define IDM_EXIT 203

// The kinds of tool windows, in the order of ToolKind.
#define IDM_TOOL_FIRST 300
#define IDM_TOOL_MDI_CHILD 300
#define IDM_TOOL_PLAIN 301
#define IDM_TOOL_NO_HANDLE 302
#define IDM_TOOL_DEAD_HANDLE 303
#define IDM_TOOL_NO_CONTROLS 304
#define IDM_TOOL_LAST 304
#define IDM_TOOL_ADD_LOG 310
#define IDM_TOOL_CLOSE 311

#define IDM_LOG_VISIBLE 400
#define IDM_LOG_DOCKED 401
#define IDM_LOG_PARENT 402
#define IDM_LOG_NO_PARENT 403
#define IDM_LOG_FOLLOW 404
#define IDM_LOG_FOCUS 405
#define IDM_LOG_MOVE 406
#define IDM_LOG_DOCK 407
#define IDM_LOG_START 408
#define IDM_LOG_FINISH 409
#define IDM_LOG_OPEN 410
#define IDM_LOG_CLOSE 411
#define IDM_ERRORS_WRITE 420
#define IDM_ERRORS_DELETE 421
#define IDM_ERRORS_SHOW 422

// Sample reports, in the order of the table in log_menu.cpp.
#define IDM_REPORT_FIRST 450
#define IDM_REPORT_LAST 456

#define IDM_CASCADE 500
#define IDM_TILE 501
#define IDM_ARRANGE 502
// From here on the window menu numbers its windows.
#define IDM_WINDOW_FIRST 5000

#define IDC_KEEP 600
#define IDC_DOCKED 601
#define IDC_KINDS 602
#define IDC_KIND_FIRST 610
#define IDC_LINES 650
#define IDC_LINES_SPIN 651
