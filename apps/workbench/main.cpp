// The workbench: starts the window, or says on the terminal why it cannot.
#include "workbench/main_frame.h"
#include "workbench/settings_folder.h"
#include "workbench/text.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <string>

#include <wx/app.h>
#include <wx/config.h>
#include <wx/fileconf.h>
#include <wx/image.h>
#include <wx/log.h>
#include <wx/msgdlg.h>

namespace {

using tamrix::workbench::start_options;

class workbench_app final : public wxApp {
public:
    explicit workbench_app(start_options options) : options_{std::move(options)}
    {
        SetAppName("tamrix");
        SetAppDisplayName("tamrix");
    }

    bool OnInit() override
    {
        wxImage::AddHandler(new wxPNGHandler);           // for the icon
        delete wxLog::SetActiveTarget(new wxLogStderr);  // the toolkit's own complaints are for the terminal
        try {
            wxConfigBase::Set(new wxFileConfig{
                "", "", tamrix::workbench::to_wx(tamrix::workbench::make_settings_folder() + "/workbench.conf")});
            auto* window = new tamrix::workbench::main_frame{options_};
            window->Show();
            window->Raise();
            window->CallAfter([this, window] { window->begin(options_.files); });
            return true;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "tamrix-workbench: %s\n", error.what());
            wxMessageDialog{nullptr, tamrix::workbench::to_wx(error.what()), "tamrix workbench", wxOK | wxICON_ERROR}
                .ShowModal();
            return false;
        }
    }

    int OnExit() override
    {
        delete wxConfigBase::Set(nullptr);
        return wxApp::OnExit();
    }

private:
    start_options options_;
};

/// Ends the program's use of the toolkit on every way out.
struct toolkit_end {
    ~toolkit_end() { wxEntryCleanup(); }
};

int run(start_options options, int count, char** arguments)
{
    wxApp::SetInstance(new workbench_app{std::move(options)});
    int toolkit_count = 1;  // the arguments are the program's own
    {
        const wxLogNull silent;
        if (!wxEntryStart(toolkit_count, arguments) || count < 1) {
            std::fputs("tamrix-workbench: no display: run it in a graphical session, or set DISPLAY or "
                       "WAYLAND_DISPLAY.\nThe command `tamrix` does its work without one.\n",
                       stderr);
            return 1;
        }
    }
    const toolkit_end end;
    if (!wxTheApp->CallOnInit()) return 1;
    const int result = wxTheApp->OnRun();
    wxTheApp->OnExit();
    return result;
}

}  // namespace

int main(int count, char** arguments)
{
    start_options options;
    CLI::App command{"A host with a window: select a device, load and save its buffer, use the plug-in's dialogs",
                     "tamrix-workbench"};
    command.add_option("--device", options.device, "Start with the device of this name");
    command.add_option("--plugin", options.plug_in, "Use this plug-in instead of the libtamrix.so beside the program");
    command.add_option("--programmer", options.programmer,
                       "Use the programmer of this library, instead of TAMRIX_PROGRAMMER or the simulated one");
    command.add_option("--programmer-options", options.programmer_options, "What that library is told")
        ->needs("--programmer");
    command.add_option("FILE", options.files, "Load this file at the start; of several it asks which one");
    command.set_version_flag("--version", TAMRIX_VERSION);
    try {
        command.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        return command.exit(error) == 0 ? 0 : 2;
    }
    return run(std::move(options), count, arguments);
}
