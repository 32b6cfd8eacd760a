#include <wx/msw/private.h>

#include <string_view>

#include "widgets/modal_dialogs.h"

namespace sontaro {

namespace {

constexpr std::wstring_view kDialogClass = L"#32770";

/// Whether a window is a box in front, and none of the toolkit's. What a box has open over itself
/// has disabled it.
bool IsSystemBox(HWND window) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    return name == kDialogClass && IsWindowVisible(window) && IsWindowEnabled(window) &&
           wxFindWinFromHandle(window) == nullptr;
}

BOOL CALLBACK CloseIfSystemBox(HWND window, LPARAM) {
    if (IsSystemBox(window)) PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

// The system runs a loop of its own for a file or a colour, in which our timers tick but which the
// toolkit cannot leave. To the box itself, being closed is being cancelled.
void CloseSystemBox() { EnumThreadWindows(GetCurrentThreadId(), CloseIfSystemBox, 0); }

}  // namespace sontaro
