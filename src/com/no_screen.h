// The shell of a build without a renderer: what would be shown ends the call with an error that the host can show.
#pragma once

#include "forms/shell.h"

#include <chrono>
#include <stdexcept>

namespace tamrix::com {

class no_screen final : public forms::shell {
public:
    forms::answer box(const forms::message_box&) override { refuse(); }
    void beep() override {}
    void doevents() override {}
    double seconds() override
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }

private:
    void run_modal(forms::form&) override { refuse(); }
    [[noreturn]] static void refuse() { throw std::runtime_error{"this build has no screen"}; }
};

}  // namespace tamrix::com
