// What tamrix selftest prints.
#pragma once

#include "cli/console.h"
#include "cli/selftest_options.h"
#include "selftest/selftest_frame.h"

#include <optional>
#include <string>
#include <vector>

namespace tamrix::cli {

/// For instance "3.000 V at pin 23 of the socket, ground at pin 24".
std::string words_of_voltage(const selftest_frame& form, const calibration_plan& plan);

void print_items(selftest_frame& form, const selftest_options& options, console& con);

/// What a run prints; with --json standard output is for the object alone.
class selftest_output {
public:
    selftest_output(const selftest_options& options, console& con) : options_{options}, con_{con} {}

    void status(const std::string& text);
    /// Words to the person at the meter.
    void ask(const std::string& text);
    void error(const std::string& text) { con_.error(text); }
    void calibration(const selftest_frame& form, const std::string& name, const calibration_plan& plan,
                     std::optional<double> reading_volts);
    /// Instead of it, where the programmer does not answer.
    void silent_calibration(const std::string& name);
    /// The faults, the verdict, what was not tested.
    void run(const selftest_report& report, const std::string& name);

private:
    const selftest_options& options_;
    console& con_;
    std::vector<std::string> statuses_;
};

}  // namespace tamrix::cli
