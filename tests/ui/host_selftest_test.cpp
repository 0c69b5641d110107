// The self-test of the simulated programmer, as a host runs it: in this process, so that its dialog can be read.
#include "host/simulator.h"
#include "over_host.h"
#include "support/own_settings.h"
#include "workbench/host_session.h"

#include <cstdlib>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <wx/toplevel.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

/// Does not wait for what the keys do: a whole run begins with one.
void press_and_go_on(const std::string& keys) { EXPECT_EQ(std::system(("xdotool key --delay 30 " + keys).c_str()), 0); }

class selftest_of_host : public testing::Test {
protected:
    const own_settings settings;
    wxui::wx_shell screen;
    host::simulator socket{SIMULATOR, DATA "/chips"};
    workbench::host_session session{PLUG_IN};

    /// A person who chooses with `keys`, presses Return once that is done, goes on after each fault, and closes the
    /// dialog a second after the run has ended.
    void run(const std::string& keys)
    {
        session.use_programmer({.library = socket.library_path(), .options = socket.options(40)});
        host_window host;
        during(screen, host, [&] {
            bool chosen = keys.empty(), started = false;
            int idle_looks = 0;
            const onlooker person{[&] {
                if (dialog().GetLabel() != "Self_test" || !static_cast<wxTopLevelWindow&>(dialog()).IsActive()) return;
                if (!std::exchange(chosen, true)) return press_and_go_on(keys);
                if (!std::exchange(started, true)) return press_and_go_on("Return");
                if (shows("Continue")) return press_and_go_on("Return");
                idle_looks = shows("Test") ? idle_looks + 1 : 0;
                if (idle_looks == 5) dialog().Close();
            }};
            const auto told = session.run([](Clstamrix& plug_in) { return plug_in.mnutesttestksm(); });
            EXPECT_EQ(told.result.error, "");
        });
    }
    using result = std::pair<tamrix_selftest_result, std::string>;
    const std::string choose_output_test = "Down Down Down Down Down Down";
};

}  // namespace

TEST_F(selftest_of_host, reports_what_it_found_in_a_broken_programmer_and_in_a_sound_one)
{
    socket.add_faults("vcc driver 7 dead; vpp driver 9 dead");
    run("");
    EXPECT_EQ(session.last_selftest(),
              result(TAMRIX_SELFTEST_FAILED, "failed, 2 faults\n"
                                             "pin 9 (port 3 bit 0): VPP driver: expected high, read low\n"
                                             "pin 7 (port 4 bit 2): VCC driver: expected high, read low"));
    socket.remove_faults();
    run("");
    EXPECT_EQ(session.last_selftest(), result(TAMRIX_SELFTEST_PASSED, "passed, as far as it was tested"));
}

TEST_F(selftest_of_host, finds_the_test_board_in_the_socket)
{
    socket.insert(host::simulator::test_board);
    run(choose_output_test);
    EXPECT_EQ(session.last_selftest(), result(TAMRIX_SELFTEST_PASSED, "passed"));
}

TEST_F(selftest_of_host, says_that_there_is_no_test_board_in_the_socket)
{
    run(choose_output_test);
    EXPECT_EQ(session.last_selftest(),
              result(TAMRIX_SELFTEST_NOT_CARRIED_OUT, "not carried out: no test board in the socket"));
}
