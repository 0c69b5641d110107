// The main window's self-test of the programmer, and what is kept of the last one.
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <ctime>
#include <exception>

namespace tamrix::workbench {

void main_frame::run_selftest()
{
    const wxString what = "Self-Test failed";
    attempt(what, [&] {
        tell(what, session_.run([](Clstamrix& plug_in) { return plug_in.mnutesttestksm(); }));
        tell_hazards();
        buffer_changed();
    });
    take_selftest();
}

/// A test that could not be carried out says nothing about the programmer, so the one before it stays the last.
void main_frame::take_selftest()
{
    const auto [result, report] = session_.last_selftest();
    if (result == TAMRIX_SELFTEST_NONE) return;
    const bool failed = result == TAMRIX_SELFTEST_FAILED;
    const auto test = host::selftest_of(std::time(nullptr), session_.programmer().model, failed, report);
    const std::string words = "Self-test: " + host::heading_of(test);
    if (result == TAMRIX_SELFTEST_PASSED) {
        log_->remark(words);
    } else {
        log_->trouble(words);
    }
    if (result == TAMRIX_SELFTEST_NOT_CARRIED_OUT) return;
    last_selftest_ = test;
    show_last_selftest();
    attempt("The result of the self-test cannot be kept",
            [&] { host::write_last_selftest(host::last_selftest_file(), test); });
}

/// A damaged file is replaced by the next self-test.
void main_frame::read_last_selftest()
{
    try {
        last_selftest_ = host::read_last_selftest(host::last_selftest_file());
    } catch (const std::exception& error) {
        log_->trouble("The last self-test is not known: " + printable(error.what()));
    }
    if (last_selftest_) {
        const std::string words = "Last self-test: " + host::words_of(*last_selftest_);
        if (last_selftest_->failed) {
            log_->trouble(words);
        } else {
            log_->remark(words);
        }
    }
    show_last_selftest();
}

void main_frame::show_last_selftest()
{
    if (!last_selftest_) return socket_panel_->show_last_selftest("none is known");
    wxString words = to_wx(host::heading_of(*last_selftest_));
    for (const std::string& fault : last_selftest_->faults) words += "\n" + to_wx(fault);
    socket_panel_->show_last_selftest(words);
}

void main_frame::recall_failed_selftest()
{
    if (!last_selftest_ || !last_selftest_->failed || last_selftest_->model != session_.programmer().model) return;
    log_->trouble("The programmer failed its last self-test: " + host::words_of(*last_selftest_));
}

}  // namespace tamrix::workbench
