// The main window's signals: what a person puts on the pins of the simulated programmer's instruments.
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <exception>
#include <string>

#include <wx/config.h>
#include <wx/tokenzr.h>

namespace tamrix::workbench {

namespace {

constexpr const char* signals_key = "/Socket/Signals";  // one a line
constexpr const char* lead_key = "/Socket/Lead";

}  // namespace

/// One that is no longer understood, such as a capture whose file is gone, is left out, and the log says so.
void main_frame::put_kept_signals_on()
{
    const wxConfigBase& kept = *wxConfigBase::Get();
    const auto put_on = [this](const std::function<void()>& one) {
        try {
            one();
        } catch (const std::exception& error) {
            programmer_trouble_ += (programmer_trouble_.empty() ? "" : "\n") + std::string{error.what()};
        }
    };
    wxStringTokenizer lines{kept.Read(signals_key, ""), "\n"};
    while (lines.HasMoreTokens()) {
        const std::string signal = to_utf8(lines.GetNextToken());
        put_on([&] { socket_->add_signals(signal); });
    }
    put_on([&] { socket_->set_lead(to_utf8(kept.Read(lead_key, ""))); });
}

void main_frame::build_signal_panel(signal_panel& panel)
{
    panel.on_add = [this](const std::string& signals) {
        return change_signals("Pins: with " + signals, [&] { return socket_->add_signals(signals); });
    };
    panel.on_change = [this](std::size_t index, const std::string& signal) {
        return change_signals("Pins: now with " + signal, [&] { return socket_->change_signal(index, signal); });
    };
    panel.on_remove = [this, &panel](std::size_t index) {
        panel.say(change_signals("Pins: without " + socket_->signals().at(index),
                                 [&] { return socket_->remove_signal(index); }));
    };
    panel.on_lead = [this, &panel](const std::string& pins) {
        panel.say(change_signals(pins.empty() ? "Pins: without a lead" : "Pins: a lead from the generator to " + pins,
                                 [&] { return socket_->set_lead(pins); }));
        panel.refresh();  // a lead that was refused is not shown either
    };
}

std::string main_frame::change_signals(const std::string& remark, const std::function<bool()>& change)
{
    bool through = false;
    try {
        through = change();
    } catch (const std::exception& error) {
        return error.what();
    }
    attempt("The programmer cannot be changed", [&] {
        socket_changed(through);
        log_->remark(remark);
        wxString lines;
        for (const std::string& signal : socket_->signals()) lines += to_wx(signal) + "\n";
        wxConfigBase::Get()->Write(signals_key, lines);
        wxConfigBase::Get()->Write(lead_key, to_wx(socket_->lead()));
    });
    return {};
}

}  // namespace tamrix::workbench
