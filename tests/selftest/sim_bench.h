// A self-test dialog with the simulated programmer in virtual time, and a person who presses its buttons.
#pragma once

#include "sim/programmer.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"
#include "support/transcript_programmer.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tamrix::tests {

/// Which programmer, how it is connected, and what is in its socket.
struct situation {
    std::int16_t model = 40;
    int generation = 0;  // 17, or any other
    bool usb = true;
    bool test_board = false;
    bool low_first = false;  // the second of two Output Tests
    int memory_banks = 0;    // 0: what the model has
    bool image = true;       // for the FPGAs of modules
    bool transcript = true;  // of the calls: a run without it is faster
    bool events = true;      // in the transcript
    std::vector<std::string> faults{};
};

/// "model 40 usb gen17: pins 7 and 8 bridged".
std::string name_of(const situation& where);

struct sim_bench : plug_in_fixture {
    explicit sim_bench(const situation& where);

    temp_folder host_folder;
    std::vector<std::string> transcript;
    std::vector<std::string> errors;  // the statuses that begin so
    std::shared_ptr<sim::virtual_clock> time = std::make_shared<sim::virtual_clock>();
    std::shared_ptr<sim::journal> log = std::make_shared<sim::journal>(time);
    sim::programmer* hardware = nullptr;  // from the first use of the programmer on
    /// What the person does at each wait of runstp(), in a round of the pump.
    std::function<void()> at_wait;

    const selftest_report& report() const { return variables.selftest.last; }
    const std::string& last_status() const { return last_status_; }
    /// Another programmer of the same kind with other faults takes the place of this one.
    void replace_programmer(std::vector<std::string> faults);
    /// What a run did that can harm something, with what it left on.
    std::vector<std::string> hazards();

private:
    bool waits_ = false;
    std::string last_status_;
    std::vector<std::string> faults_;
};

}  // namespace tamrix::tests
