// Signals at the simulated programmer, as a host keeps them.
#include "host/signal_examples.h"
#include "host/simulator.h"
#include "support/temp_files.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::host {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class simulated_signals : public testing::Test {
protected:
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};

    template <class Change>
    static std::string why(Change&& change)
    {
        try {
            change();
            return {};
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
    std::string why_not(const std::string& signals)
    {
        return why([&] { socket.add_signals(signals); });
    }
};

TEST_F(simulated_signals, are_in_the_options_with_the_lead_at_their_end)
{
    EXPECT_FALSE(socket.add_signals(" P21 square 1000 ; P25 P26 i2c 100000 write 50 01 ;"))
        << "no programmer is running";
    socket.set_lead("P23 P24");
    socket.insert("7400");
    EXPECT_THAT(socket.signals(), ElementsAre("P21 square 1000", "P25 P26 i2c 100000 write 50 01"));
    EXPECT_EQ(socket.lead(), "P23 P24");
    EXPECT_EQ(socket.options(40), "model 40\nspeed 20\nchips " TAMRIX_DATA_OF_SOURCE
                                  "/chips\nno signals\nsignal P21 square 1000\nsignal P25 P26 i2c 100000 write 50 01\n"
                                  "signal lead 23 P23 P24\nsocket 7400\nno faults\n");
    socket.set_lead("");
    EXPECT_THAT(socket.options(40), HasSubstr("write 50 01\nsocket 7400"));
}

TEST_F(simulated_signals, are_changed_and_removed_by_their_place)
{
    socket.add_signals("P21 high; P22 low");
    socket.change_signal(0, "P21 square 50");
    EXPECT_THAT(socket.signals(), ElementsAre("P21 square 50", "P22 low"));
    socket.change_signal(2, "P23 high");
    socket.remove_signal(2);
    EXPECT_THAT(socket.signals(), ElementsAre("P21 square 50", "P22 low")) << "there is no third one";
    socket.remove_signal(0);
    EXPECT_THAT(socket.signals(), ElementsAre("P22 low"));
}

TEST_F(simulated_signals, that_are_wrong_are_refused_with_the_place_and_change_nothing)
{
    socket.add_signals("P21 high");
    EXPECT_EQ(why_not("P22 square 1000 duti 25"),
              "signal \"P22 square 1000 duti 25\", column 17: \"duti\" where the end was expected");
    EXPECT_EQ(why_not("P22 low; P21 square 1000"), "signal \"P21 square 1000\", column 1: P21 has a signal already");
    EXPECT_NE(why_not("P22 low\nsocket 7400"), "") << "a line of its own is a signal too";
    EXPECT_EQ(why_not(" ; "), "A signal is expected, such as \"P21 square 1000\".");
    EXPECT_EQ(why([&] { socket.set_lead("P21"); }), "signal \"lead 23 P21\", column 9: P21 has a signal already");
    EXPECT_NE(why([&] { socket.change_signal(0, "P29 low"); }), "");
    EXPECT_EQ(why([&] { socket.change_signal(0, "P22 low; P23 low"); }),
              "One signal is expected, such as \"P21 square 1000\".");
    EXPECT_THAT(socket.signals(), ElementsAre("P21 high"));
    EXPECT_EQ(socket.lead(), "");
}

TEST_F(simulated_signals, may_have_a_semicolon_in_their_text)
{
    socket.add_signals(R"(P21 uart 9600 "a;\";b"; P22 low)");
    EXPECT_THAT(socket.signals(), ElementsAre(R"(P21 uart 9600 "a\x3B\"\x3Bb")", "P22 low"));
}

TEST_F(simulated_signals, of_chips_are_those_of_the_folder)
{
    EXPECT_EQ(why_not("chip 7493 14=P21 12=P22"), "");
    EXPECT_THAT(why_not("chip 9999 14=P21"), HasSubstr("column 6"));
}

TEST_F(simulated_signals, understands_each_that_it_offers)
{
    const tests::temp_folder folder;
    const std::string capture = folder.write("capture.bin", "\x01\x02");
    for (std::string example : signal_examples({})) {
        if (const auto at = example.find("capture.bin"); at != std::string::npos) example.replace(at, 11, capture);
        EXPECT_EQ(why_not(example), "");
        socket.remove_signal(0);
        EXPECT_THAT(socket.signals(), IsEmpty());
    }
}

TEST_F(simulated_signals, offers_pins_that_are_free)
{
    const auto offered = [](const std::vector<std::string>& taken) { return signal_examples(taken).at(0); };
    EXPECT_EQ(offered({}), "P21 square 1000 duty 50 phase 0");
    EXPECT_THAT(offered({"P21..P23 counter 10", "P25 uart 9600 \" P24 \""}), testing::StartsWith("P24 "));
    EXPECT_THAT(offered({"lead 23 P21 P23"}), testing::StartsWith("P22 "));
    EXPECT_THAT(offered({"P21..P28 noise 10"}), testing::StartsWith("P21 ")) << "none is free";
    const auto serial = signal_examples({"P23 high"});
    EXPECT_EQ(std::ranges::count_if(serial, [](const auto& one) { return one.starts_with("P21 P22 i2c "); }), 1);
    EXPECT_EQ(std::ranges::count_if(serial, [](const auto& one) { return one.starts_with("P24..P27 spi "); }), 1);
}

}  // namespace
}  // namespace tamrix::host
