// Every engine on every kind of programmer, call by call: the files hold what has to be sent.
#include "ttl/run/engines.h"
#include "ttl/run/prepare.h"
#include "ttl/ttl_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using engine = run_outcome (*)(session&, ttl_variables&, std::int16_t, std::int16_t, std::int16_t, std::uint8_t);
using forms::answer;

struct played {
    std::string title;
    lines rows;
    lines shown;  // by the socket, row by row
    std::vector<answer> answers{};
    std::int16_t stopfirst = 0;
    std::uint8_t logmode = 0;
};

const std::string& at_rest = nand_rows[0];
const std::string& high = nand_rows[1];
const std::string stuck = "11H11LGL11L11V";  // the output of pin 3 does not go low

std::vector<played> one_row_each(const std::vector<std::pair<std::string, std::string>>& rows)
{
    std::vector<played> all;
    for (const auto& [title, row] : rows) all.push_back({title, {row}, {row}});
    return all;
}

std::vector<played> all_runs()
{
    std::vector<played> runs{{"nand", nand_rows, nand_rows}};
    for (auto& one : one_row_each({{"clock C", "C1H00HGH00H00V"},
                                   {"clock K", "K1H00HGH00H00V"},
                                   {"both clocks", "CKH00HGH00H00V"},
                                   {"high impedance", "00Z00HGH00H00V"},
                                   {"sixteen pins", "00H00H0GH00H000V"},
                                   {"unused pins", "XNH1XHGH00H00V"}}))
        runs.push_back(std::move(one));
    runs.push_back({"abort", nand_rows, {at_rest, stuck}, {answer::abort}});
    runs.push_back({"retry", nand_rows, {at_rest, stuck, at_rest, high}, {answer::retry}});
    runs.push_back({"ignore", {at_rest, high, at_rest}, {at_rest, stuck, at_rest}, {answer::ignore}});
    runs.push_back({"silent", {at_rest, high, at_rest}, {at_rest, stuck, at_rest}, {}, -1});
    runs.push_back({"log", {at_rest, high, at_rest}, {at_rest, stuck, at_rest}, {}, 0, 1});
    return runs;
}

struct transcript {
    const char* file;
    engine play;
    std::int16_t modeltype;
    bool usb;
    std::uint8_t wnote = 0;  // 1: the device data of the host switch the supply
};

std::string record(const transcript& which)
{
    std::string text;
    for (const played& one : all_runs()) {
        ttl_fixture f;
        f.use_model(which.modeltype, which.usb);
        f.variables.ttl.wnote = which.wnote;
        f.put_rows(one.rows);
        const bool socket40 = which.play == runport40 || which.play == runbatch40;
        socket40 ? f.socket40_shows(one.shown) : f.socket_shows(one.shown);
        for (const answer a : one.answers) f.shell.answer_next_box(a);
        f.log.add("== " + one.title);
        EXPECT_TRUE(prepare_supply(f.session, f.variables.ttl, "7400"));
        const auto& ttl = f.variables.ttl;
        const bool failed = which.play(f.session, f.variables.ttl, ttl.ttlcnt, ttl.ttlpin, one.stopfirst, one.logmode)
                                .ended_in_failure();
        if (!f.status().empty()) f.log.add("status " + ttl_fixture::one_line(f.status()));
        f.log.add(failed ? "result 1" : "result 0");
        text += f.log.text();
    }
    return text;
}

class transcripts : public testing::TestWithParam<transcript> {};

TEST_P(transcripts, every_call_is_as_it_stands_in_the_file)
{
    const std::string file = std::string{TAMRIX_TRANSCRIPTS "/"} + GetParam().file + ".txt";
    const std::string expected = read_text(file);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(record(GetParam()), expected);
}

INSTANTIATE_TEST_SUITE_P(
    of, transcripts,
    testing::Values(
        transcript{"runport-registers-15", runport, 15, false}, transcript{"runport-registers-16", runport, 16, false},
        transcript{"runport-registers-22", runport, 22, false}, transcript{"runport-registers-23", runport, 23, false},
        transcript{"runport-registers-24", runport, 24, false}, transcript{"runport-registers-28", runport, 28, false},
        transcript{"runport-registers-29", runport, 29, false}, transcript{"runport-registers-40", runport, 40, false},
        transcript{"runport-registers-50", runport, 50, false}, transcript{"runport-usb-15", runport, 15, true},
        transcript{"runport-usb-16", runport, 16, true}, transcript{"runport-usb-22", runport, 22, true},
        transcript{"runport-usb-23", runport, 23, true}, transcript{"runport-usb-24", runport, 24, true},
        transcript{"runport-usb-28", runport, 28, true}, transcript{"runport-usb-29", runport, 29, true},
        transcript{"runport-usb-40", runport, 40, true}, transcript{"runport-usb-50", runport, 50, true},
        transcript{"runbatch-15", runbatch, 15, true}, transcript{"runbatch-16", runbatch, 16, true},
        transcript{"runbatch-40", runbatch, 40, true}, transcript{"runbatch-50", runbatch, 50, true},
        transcript{"runport40-22", runport40, 22, true}, transcript{"runport40-23", runport40, 23, true},
        transcript{"runport40-24", runport40, 24, true}, transcript{"runport40-28", runport40, 28, true},
        transcript{"runport40-29", runport40, 29, true}, transcript{"runbatch40-22", runbatch40, 22, true},
        transcript{"runbatch40-23", runbatch40, 23, true}, transcript{"runbatch40-24", runbatch40, 24, true},
        transcript{"runbatch40-28", runbatch40, 28, true}, transcript{"runbatch40-29", runbatch40, 29, true},
        transcript{"runport-registers-40-device_data", runport, 40, false, 1},
        transcript{"runport-usb-40-device_data", runport, 40, true, 1},
        transcript{"runbatch-40-device_data", runbatch, 40, true, 1},
        transcript{"runport40-23-device_data", runport40, 23, true, 1},
        transcript{"runbatch40-23-device_data", runbatch40, 23, true, 1}),
    [](const auto& one) {
        std::string name = one.param.file;
        std::ranges::replace(name, '-', '_');
        return name;
    });

}  // namespace
}  // namespace tamrix::tests
