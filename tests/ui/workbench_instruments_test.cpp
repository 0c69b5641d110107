// Signals on the Socket page of the workbench, and the instruments of its Tools menu that look at them; by keyboard
// alone, in a window of 800 x 600.
#include "programs_fixture.h"

#include <set>

#include <gmock/gmock.h>

using namespace tamrix::tests;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string analyzer_title = "^Logic Analyzer";
constexpr std::uint32_t blue = 0x0000FF;  // of channel 1, P21

class workbench_with_instruments : public programs {
protected:
    struct small_workbench : program {
        explicit small_workbench(const workbench_with_instruments& of)
            : program{"tamrix-workbench", {"--device", "27C64"}, of.settings()}
        {
            to_front();
            resize(800, 600);
        }
        void to_front() { focus("^tamrix workbench"); }
        void put_on(const std::string& signal)
        {
            to_front();
            press("F8");
            type(signal);
            press("Return");
        }
        /// From the menu, over the pin map.
        void open_instrument(const std::string& letter, const std::string& title)
        {
            to_front();
            press("alt+o " + letter);
            focus("Pin");
            press("Return");
            focus(title);
        }
        void close_instrument(const std::string& title)
        {
            press("Escape");
            EXPECT_TRUE(comes_true_within_ten_seconds([&] { return shown(title) == 0; })) << title;
            to_front();
        }
    };

    std::string kept() const { return content(folder / "config" / "tamrix" / "workbench.conf"); }

    /// How many edges of the uppermost channel the analyzer shows.
    static std::size_t edges_of_first_channel(const picture& seen)
    {
        std::set<int> columns;
        for (int x = 0; x < seen.width; ++x) {
            for (int y = 0, run = 0; y < seen.height / 4; ++y) {
                run = seen.colour(x, y) == blue ? run + 1 : 0;
                if (run > 10) columns.insert(x);
            }
        }
        return columns.size();
    }
    /// About so many: the wave begins at any time, and lines of the grid hide the edges below them.
    static bool shows_edges(const program& workbench, std::size_t expected)
    {
        return comes_true_within_ten_seconds([&] {
            const std::size_t seen = edges_of_first_channel(workbench.look_at(analyzer_title));
            return seen * 4 >= expected * 3 && seen <= expected + 1;
        });
    }
};

}  // namespace

TEST_F(workbench_with_instruments, record_and_show_a_square_wave_that_a_person_puts_on_p21)
{
    small_workbench workbench{*this};
    workbench.put_on("P21 square 1000");
    workbench.open_instrument("l", analyzer_title);
    for (int zoom = 0; zoom < 4; ++zoom) workbench.press("minus");  // 512 samples of 3.4 microseconds
    EXPECT_EQ(edges_of_first_channel(workbench.look_at(analyzer_title)), 0u);
    workbench.press("space");
    EXPECT_TRUE(shows_edges(workbench, 3)) << "of 1.7 periods";
    workbench.close_instrument(analyzer_title);
    EXPECT_THAT(log_of(workbench), EndsWith("Pins: with P21 square 1000\n"));
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_with_instruments, record_what_the_generator_makes_through_its_lead)
{
    small_workbench workbench{*this};
    workbench.press("F8");
    workbench.press("alt+g Down Down Down");
    workbench.open_instrument("s", "^Signal Generator");
    workbench.type("5000");
    workbench.press("Return");
    workbench.close_instrument("^Signal Generator");
    workbench.open_instrument("l", analyzer_title);
    for (int zoom = 0; zoom < 4; ++zoom) workbench.press("minus");
    workbench.press("space");
    EXPECT_TRUE(shows_edges(workbench, 17)) << "of 8.7 periods";
    workbench.close_instrument(analyzer_title);
    EXPECT_THAT(log_of(workbench), EndsWith("Pins: a lead from the generator to P21 P23\n"));
    quit(workbench);
    EXPECT_THAT(kept(), HasSubstr("\nLead=P21 P23\n"));
}

TEST_F(workbench_with_instruments, says_what_is_wrong_with_a_signal_and_changes_and_removes_signals)
{
    small_workbench workbench{*this};
    workbench.put_on("P21 squar");
    workbench.press("ctrl+a");
    workbench.type("P21 high; P22 low");
    workbench.press("alt+n");
    workbench.press("F8 Tab Tab Tab Down");  // over the arrow and the button to the list
    workbench.press("F8");
    workbench.type("P23 low");
    workbench.press("alt+c");
    workbench.press("alt+k");
    workbench.press("alt+g Down Down");
    workbench.to_front();
    EXPECT_THAT(log_of(workbench), AllOf(EndsWith("Pins: with P21 high; P22 low\n"
                                                  "Pins: now with P23 low\n"
                                                  "Pins: without P23 low\n"
                                                  "Pins: a lead from the generator to P23\n"),
                                         Not(HasSubstr("squar"))));
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_with_instruments, keep_signals_and_lead_until_the_next_start)
{
    const std::string capture = file("capture.bin");
    std::ofstream{capture} << "\x01\x02";
    {
        small_workbench workbench{*this};
        workbench.put_on("P21 uart 9600 \"a;b\"");
        workbench.put_on("P22 file " + capture + " period 3.4");
        workbench.press("alt+g Down");
        quit(workbench);
    }
    fs::remove(capture);
    small_workbench next{*this};
    EXPECT_THAT(log_of(next), HasSubstr("column 10: " + capture + ": the file cannot be read\n"));
    next.to_front();
    next.press("F8");
    next.press("Tab Tab Tab Down");
    next.press("alt+k");
    next.to_front();
    EXPECT_THAT(log_of(next), EndsWith("Pins: without P21 uart 9600 \"a\\x3Bb\"\n"));
    quit(next);
    EXPECT_THAT(kept(), AllOf(HasSubstr("\nSignals=\n"), HasSubstr("\nLead=P23\n")));
}
