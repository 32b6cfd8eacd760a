#include <windows.h>  // before the next one

#include <commctrl.h>

#include <memory>

#include "widgets/system_menu.h"

namespace sontaro {

namespace {

constexpr WPARAM kCommandBits = 0xFFF0;

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                 UINT_PTR id, DWORD_PTR data) {
    auto* chosen = reinterpret_cast<std::function<void()>*>(data);
    if (message == WM_SYSCOMMAND && (wParam & kCommandBits) == id) {
        (*chosen)();
        return 0;
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, WindowProcedure, id);
        const std::unique_ptr<std::function<void()>> owned(chosen);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void AddToSystemMenu(wxTopLevelWindow& window, unsigned id, const wxString& text,
                     const std::function<void()>& chosen) {
    const HWND handle = window.GetHWND();
    const HMENU menu = GetSystemMenu(handle, FALSE);
    auto owned = std::make_unique<std::function<void()>>(chosen);
    if (!menu ||
        !SetWindowSubclass(handle, WindowProcedure, id, reinterpret_cast<DWORD_PTR>(owned.get())))
        return;
    static_cast<void>(owned.release());  // the window procedure owns it from here on
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, id, text.wc_str());
}

}  // namespace sontaro
