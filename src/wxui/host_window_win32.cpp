#include "wxui/host_window.h"

#include "wxui/own_module_win32.h"

#include <wx/msw/private.h>
#include <wx/window.h>

namespace tamrix::wxui {

namespace {

/// The controls in the system's present look, whatever the host's manifest says. Ours is a resource of the library.
HANDLE present_look()
{
    wchar_t path[MAX_PATH];
    ::GetModuleFileNameW(own_module(), path, MAX_PATH);
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.lpSource = path;
    context.hModule = own_module();
    context.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
    return ::CreateActCtxW(&context);
}

}  // namespace

host_window::host_window() : look_{present_look()}
{
    ULONG_PTR cookie = 0;
    if (look_ != INVALID_HANDLE_VALUE && ::ActivateActCtx(look_, &cookie) != FALSE) cookie_ = cookie;
    HWND front = ::GetActiveWindow();
    if (front == nullptr || ::IsWindowEnabled(front) == FALSE) return;
    if (wxFindWinFromHandle(front) != nullptr) return;  // one dialog before another: wxWidgets sees to that
    handle_ = front;
    ::EnableWindow(front, FALSE);
}

host_window::~host_window()
{
    if (handle_ != nullptr) {
        const auto front = static_cast<HWND>(handle_);
        ::EnableWindow(front, TRUE);
        ::SetForegroundWindow(front);
    }
    if (cookie_ != 0) ::DeactivateActCtx(0, cookie_);
    if (look_ != INVALID_HANDLE_VALUE) ::ReleaseActCtx(look_);
}

void host_window::put_behind(wxWindow& ours) const
{
    if (handle_ == nullptr) return;
    ::SetWindowLongPtrW(ours.GetHWND(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(handle_));
}

void serve_host_messages()
{
    for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
        if (message.message == WM_QUIT) {  // is for the host's loop
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

}  // namespace tamrix::wxui
