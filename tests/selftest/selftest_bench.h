// A self-test dialog with a programmer that answers soundly, and a person who presses its buttons.
#pragma once

#include "selftest/pinnote.h"
#include "small_programmer.h"
#include "support/plug_in_fixture.h"
#include "support/transcript_programmer.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tamrix::tests {

using lines = std::vector<std::string>;

struct selftest_bench : plug_in_fixture {
    explicit selftest_bench(std::int16_t model = 1, std::uint8_t wfig1 = 0, bool usb = true)
    {
        session.blocks.modeltype(0) = model;
        session.blocks.wfig(1) = wfig1;
        session.blocks.usbable(0) = usb ? bool16_true : bool16{0};
        session.hardware.source = with_transcript(hardware.source(), transcript);
        variables.selftest.random_start = [this] { return ++starts; };
        variables.selftest.on_event = [this](const selftest_event& event) {
            transcript.push_back(line_of(event));
            waits_ = event.what == selftest_event::kind::wait;
        };
        shell.on_doevents = [this] {
            if (!std::exchange(waits_, false)) return;
            if (!at_wait) throw std::logic_error{"nobody answers the wait: " + words_of_last_fault()};
            at_wait();
        };
    }

    small_programmer hardware;
    lines transcript;
    std::uint32_t starts = 0;
    /// What the person does at each wait of runstp(); called in a round of the pump.
    std::function<void()> at_wait;

    /// Shows a dialog; `steps` are the person's.
    template <class Dialog = pinnote, class Steps>
    void during(const Steps& steps)
    {
        Dialog dialog{session, variables.selftest};
        shell.during(dialog, [&] { steps(dialog); });
    }
    const selftest_report& report() const { return variables.selftest.last; }
    int count(std::string_view start) const
    {
        return static_cast<int>(
            std::ranges::count_if(transcript, [&](const auto& line) { return line.starts_with(start); }));
    }

private:
    std::string words_of_last_fault() const { return report().faults.empty() ? "" : words_of(report().faults.back()); }

    bool waits_ = false;
};

/// The fills of lamps that are not white, as "22 red".
inline std::string painted(socket_frame& dialog)
{
    const std::pair<forms::colour, const char*> names[] = {
        {lamps::blue, "blue"},   {lamps::red, "red"},       {lamps::cyan, "cyan"},
        {lamps::green, "green"}, {lamps::yellow, "yellow"}, {lamps::magenta, "magenta"},
    };
    std::string all;
    for (int item = 0; item < dialog.Shape1.count(); ++item) {
        for (const auto& [ink, name] : names)
            if (dialog.Shape1(item).fill().value_or(0) == ink)
                all += (all.empty() ? "" : ", ") + std::to_string(item) + " " + name;
    }
    return all;
}

/// The fills of marks that are not black.
inline std::string marked(socket_frame& dialog)
{
    std::string all;
    for (int item = 0; item < dialog.Shape2.count(); ++item)
        if (dialog.Shape2(item).fill().value_or(0) != lamps::black) all += std::to_string(item) + " ";
    return all;
}

}  // namespace tamrix::tests
