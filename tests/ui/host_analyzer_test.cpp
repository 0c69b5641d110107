// The logic analyzer of a host, on the simulated programmer.
#include "host/simulator.h"
#include "over_host.h"
#include "support/own_settings.h"
#include "workbench/host_session.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/toplevel.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class analyzer_of_host : public testing::Test {
protected:
    const own_settings settings;
    wxui::wx_shell screen;
    host::simulator socket{SIMULATOR, DATA "/chips"};
    workbench::host_session session{PLUG_IN};
    std::vector<std::uint8_t> recorded{};

    analyzer_of_host()
    {
        session.use_programmer(
            {.library = socket.library_path(), .options = socket.options(40) + "; speed 100; signal P21 square 1000"});
    }

    /// A person who closes the pin map, records, and closes the analyzer.
    void record()
    {
        host_window host;
        during(screen, host, [&] {
            const onlooker person{[&] {
                if (!static_cast<wxTopLevelWindow&>(dialog()).IsActive()) return;
                if (dialog().GetLabel() != "Logic Analyzer")
                    return void(shown_as("OK").IsEnabled() && (press("Return"), true));
                if (shows("Status:Record OK!")) {
                    recorded.assign(session.buffer().begin(), session.buffer().end());
                    dialog().Close();
                } else if (shows("Record")) {
                    press("space");
                }
            }};
            EXPECT_EQ(session.analyze().result.error, "");
        });
    }
};

TEST_F(analyzer_of_host, records_into_a_buffer_of_its_own)
{
    session.select({.name = "small", .words = 8192, .buffer_bytes = 8192, .vcc_centivolts = 330});
    std::ranges::fill(session.buffer(), std::uint8_t{0x5A});
    record();
    EXPECT_EQ(recorded.size(), 16U * 32768);
    EXPECT_GT(std::ranges::count(recorded, 0xFE), 1000);
    EXPECT_EQ(std::ranges::count(session.buffer(), 0x5A), 8192);
    EXPECT_EQ(session.device().buffer_bytes, 8192);
}

}  // namespace
