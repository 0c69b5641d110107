#include "wxui/toolkit.h"

#include <clocale>
#include <stdexcept>
#include <string>

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

namespace tamrix::wxui {

namespace {

class app_of_library final : public wxApp {
public:
    app_of_library()
    {
        SetAppName("tamrix");
        SetExitOnFrameDelete(false);  // the main loop, if there is one, is the host's
    }
    bool OnInit() override { return true; }
};

/// The toolkit sets the locale of the whole process; the host's way to write numbers stays.
class numbers_of_host {
public:
    numbers_of_host() : before_{std::setlocale(LC_NUMERIC, nullptr)} {}
    ~numbers_of_host() { std::setlocale(LC_NUMERIC, before_.c_str()); }
    numbers_of_host(const numbers_of_host&) = delete;
    numbers_of_host& operator=(const numbers_of_host&) = delete;

private:
    std::string before_;
};

}  // namespace

void toolkit::need_display()
{
    if (started_ && std::this_thread::get_id() != thread_)
        throw std::runtime_error{"dialogs can be shown on one thread only, that of the first dialog"};
    if (wxTheApp == nullptr) start();
    if (!wxTheApp->IsGUI()) throw std::runtime_error{"no display: the host runs wxWidgets without its windows"};
}

void toolkit::start()
{
    const numbers_of_host kept;
    const wxLogNull silent;  // the error below says what went wrong
    wxApp::SetInstance(new app_of_library);
    thread_ = std::this_thread::get_id();
    started_ = start_wxwidgets() && wxTheApp->CallOnInit();
    if (!started_) {
        throw std::runtime_error{"no display to show a dialog on: run the host in a graphical session, or set DISPLAY "
                                 "or WAYLAND_DISPLAY"};
    }
}

bool toolkit::end()
{
    if (!started_) return true;
    if (std::this_thread::get_id() != thread_) return false;
    if (wxTheApp != nullptr) wxEntryCleanup();
    started_ = false;
    return true;
}

}  // namespace tamrix::wxui
