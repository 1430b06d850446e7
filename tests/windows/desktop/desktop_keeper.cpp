// Keeps the desktop as long as it runs. Wine takes a desktop down when the last program with a window ends, as it does
// between two tests; one that begins in that moment finds none to make its windows on.

#include <windows.h>

int WINAPI WinMain(HINSTANCE program, HINSTANCE, LPSTR, int) {
    if (!CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, program, nullptr))
        return 1;
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), "kept\n", 5, &written,
              nullptr); // who started it waits for that
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}
