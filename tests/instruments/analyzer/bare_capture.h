// A capture without a window.
#pragma once

#include "instrument_bench.h"
#include "instruments/analyzer/analyzer_capture.h"

#include <string>

namespace tamrix::tests {

struct bare_capture : instrument_bench, capture_display {
    using instrument_bench::instrument_bench;

    analyzer_settings settings;
    analyzer_capture capture{session, settings, *this};
    bool gone = false;

    void clear() override { transcript.emplace_back("clear"); }
    void show_status(int panel, const std::string& words) override
    {
        transcript.push_back("status" + std::to_string(panel) + " " + words);
    }
    void enable_record(bool on) override { transcript.push_back(on ? "record on" : "record off"); }
    void enable_stop(bool on) override { transcript.push_back(on ? "stop on" : "stop off"); }
    void limit(int milliseconds) override { transcript.push_back("limit " + std::to_string(milliseconds)); }
    void draw() override { transcript.emplace_back("draw"); }
    bool closed() const override { return gone; }

    /// What is shown at last in the first panel.
    std::string last_status() const
    {
        for (auto line = transcript.rbegin(); line != transcript.rend(); ++line)
            if (line->starts_with("status1 ")) return line->substr(8);
        return "";
    }
};

}  // namespace tamrix::tests
