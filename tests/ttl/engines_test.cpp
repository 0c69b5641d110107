#include "ttl/engines.h"

#include "base/errors.h"
#include "hw/programmer.h"
#include "ttl/resultwait.h"
#include "ttl_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using forms::answer;
using kind = run_outcome::kind;

const std::string passing = "00H00HGH00H00V";
const std::string failing = "00L00HGH00H00V";  // what the socket shows then

struct engine_fixture : ttl_fixture {
    engine_fixture(std::int16_t modeltype, bool usb) { use_model(modeltype, usb); }

    /// True where the run ended in failure.
    bool run(run_outcome (*engine)(tamrix::session&, std::int16_t, std::int16_t, std::int16_t, std::uint8_t),
             std::int16_t stopfirst = 0, std::uint8_t logmode = 0)
    {
        outcome = engine(session, session.ttl.ttlcnt, session.ttl.ttlpin, stopfirst, logmode);
        return outcome.ended_in_failure();
    }
    /// The numbers of the rows that the last run reported as failed.
    std::vector<int> failed_rows() const
    {
        std::vector<int> numbers;
        for (const failed_row& row : outcome.rows) numbers.push_back(row.number);
        return numbers;
    }
    std::uint8_t& prgresult() { return session.blocks.prgresult(0); }
    /// Time goes on while something waits.
    void let_time_pass()
    {
        shell.on_doevents = [this] { shell.advance(0.1); };
    }

    run_outcome outcome;
};

TEST(runport, on_the_registers_a_K_neither_pulses_nor_fails)
{
    engine_fixture with_k{50, false}, without{50, false};
    with_k.put_rows({"K0H00HGH00H00V"});
    without.put_rows({"00H00HGH00H00V"});
    for (engine_fixture* f : {&with_k, &without}) f->socket_shows({"10H00HGH00H00V"});
    EXPECT_FALSE(with_k.run(runport));
    EXPECT_TRUE(without.run(runport, -1)) << "a 0 there is compared";
    EXPECT_EQ(with_k.log.count("regout"), without.log.count("regout"));
}

TEST(runport, that_stops_at_the_first_failure_powers_off_and_shows_nothing)
{
    engine_fixture f{50, false};
    f.put_rows({passing, passing, passing});
    f.socket_shows({passing, failing});
    EXPECT_TRUE(f.run(runport, -1));
    EXPECT_EQ(f.shell.boxes(), lines{});
    EXPECT_EQ(f.log.count("regin 0"), 2) << "the third row is not played";
    EXPECT_EQ(f.log.count("vccpin 107 0"), 1);
    EXPECT_EQ(f.log.count("gndpin 1 0"), 1);
    EXPECT_EQ(f.log.lines.back(), "regout 255 10");
    EXPECT_EQ(f.outcome.what, kind::failed);
    EXPECT_EQ(f.failed_rows(), std::vector<int>{}) << "none was reported";
}

TEST(runport, after_Ignore_a_clean_rest_is_a_pass)
{
    engine_fixture f{50, true};
    f.put_rows({passing, passing});
    f.socket_shows({failing, passing});
    f.shell.answer_next_box(answer::ignore);
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.shell.boxes().size(), 1u);
    EXPECT_EQ(f.outcome.what, kind::passed);
    EXPECT_EQ(f.failed_rows(), std::vector{1}) << "the outcome still names what was ignored";
    EXPECT_EQ(f.outcome.rows[0].row, passing);
    EXPECT_EQ(f.outcome.rows[0].result, failing);
}

TEST(runport, in_the_log_every_row_from_the_failing_one_on_is_reported)
{
    engine_fixture f{50, false};
    f.put_rows({passing, passing, passing, passing, passing});
    f.socket_shows({passing, passing, failing, passing, passing});
    EXPECT_TRUE(f.run(runport, 0, 1));
    EXPECT_EQ(f.status(), ">> Expected: V0003:00H00HGH00H00V\n>>   Result: V0003:00L00HGH00H00V\n\n"
                          ">> Expected: V0004:00H00HGH00H00V\n>>   Result: V0004:00H00HGH00H00V\n\n"
                          ">> Expected: V0005:00H00HGH00H00V\n>>   Result: V0005:00H00HGH00H00V\n\n");
    EXPECT_EQ(f.shell.boxes(), lines{});
    EXPECT_EQ(f.outcome.what, kind::failed);
    EXPECT_EQ(f.failed_rows(), std::vector{3});
}

TEST(report, is_a_box_with_the_critical_icon_that_asks_how_to_go_on)
{
    engine_fixture f{50, false};
    f.put_rows({passing});
    f.socket_shows({failing});
    f.shell.answer_next_box(answer::abort);
    EXPECT_TRUE(f.run(runport));
    const forms::message_box expected{
        .text = "Expected: V0001:00H00HGH00H00V\n  Result: V0001:00L00HGH00H00V\n\nTTL & CMOS Test fail!",
        .title = "Warning! ",
        .picture = forms::icon::error,
        .buttons = forms::buttons_of_box::abort_retry_ignore,
        .lines = forms::lines_of_box::letters};
    EXPECT_EQ(f.shell.whole_boxes(), std::vector{expected});
}

TEST(report, of_a_script_on_48_positions_is_indented_in_the_second_English)
{
    engine_fixture f{50, true};
    f.session.blocks.Language(0) = 15000;
    f.put_rows({passing});
    f.socket_shows({failing, failing});
    f.run(runbatch);
    f.run(runport);
    ASSERT_EQ(f.shell.boxes().size(), 2u);
    EXPECT_NE(f.shell.boxes()[0].find("V\n     Result: V0001"), std::string::npos);
    EXPECT_NE(f.shell.boxes()[1].find("V\n  Result: V0001"), std::string::npos);
}

TEST(runport, without_a_reply_fails_and_still_powers_off)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing, passing});
        f.log.replywait_results = {false};
        EXPECT_TRUE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::lost_reply);
        EXPECT_EQ(f.shell.boxes(), lines{});
        EXPECT_EQ(f.log.count("replywait"), 1);
        EXPECT_EQ(f.log.lines.back(), "usbcomwrite 13: 05 FF FF FF FF FF FF FF FF FF FF FF FF");
        EXPECT_EQ(f.log.count("gndpin 1 0"), 1);
    }
}

TEST(runport, ends_in_failure_where_any_of_its_frames_is_not_taken)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture all_taken{23, true};
        all_taken.put_rows({"CKH00HGH00H00V"});
        all_taken.socket40_shows({"00H00HGH00H00V"});
        all_taken.run(engine, -1);
        const int frames = all_taken.log.count("usbcomwrite");
        ASSERT_EQ(frames, 6) << "five for the row, one to release";
        for (int refused = 0; refused < frames; ++refused) {
            engine_fixture f{23, true};
            f.put_rows({"CKH00HGH00H00V"});
            f.socket40_shows({"00H00HGH00H00V"});
            f.log.usbcomwrite_results.assign(static_cast<std::size_t>(refused), 0);
            f.log.usbcomwrite_results.push_back(1);
            EXPECT_TRUE(f.run(engine)) << refused;
            EXPECT_EQ(f.outcome.what, kind::refused_frame) << refused;
            EXPECT_EQ(f.log.count("gndpin 1 0"), 1) << refused;
            EXPECT_EQ(f.log.lines.back(), "usbcomwrite 13: 05 FF FF FF FF FF FF FF FF FF FF FF FF");
            EXPECT_EQ(f.prgresult(), refused == frames - 1 ? 1 : 0) << "what the last frame gave";
        }
    }
}

TEST(runport, that_cannot_release_the_socket_says_so_even_after_a_failed_row)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing});
        f.log.socket = {six_bytes{}};
        f.log.usbcomwrite_results = {0, 1};
        EXPECT_TRUE(f.run(engine, -1));
        EXPECT_EQ(f.outcome.what, kind::refused_frame);
    }
}

TEST(runport, without_a_reply_says_so_even_after_a_failed_row)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing, passing});
        f.log.socket = {six_bytes{}};
        f.log.replywait_results = {true, false};
        f.log.usbcomwrite_results = {0, 0, 1};  // the release is not taken either
        EXPECT_TRUE(f.run(engine, 0, 1));
        EXPECT_EQ(f.outcome.what, kind::lost_reply);
        EXPECT_EQ(f.failed_rows(), std::vector{1});
    }
}

TEST(runport, that_cannot_begin_again_on_Retry_says_so)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing});
        f.log.socket = {six_bytes{}};
        f.log.usbcomwrite_results = {0, 1};
        f.shell.answer_next_box(answer::retry);
        EXPECT_TRUE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::refused_frame);
        EXPECT_EQ(f.log.count("hwreset"), 0);
    }
}

TEST(Retry, forgets_the_rows_that_failed_before)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        engine_fixture f{23, true};
        const bool socket40 = engine == runport40 || engine == runbatch40;
        f.put_rows({passing, passing});
        const six_bytes good = socket40 ? slow::ports_of_40(passing) : slow::ports_of(passing);
        f.log.socket = {six_bytes{}, good, good, good};
        f.shell.answer_next_box(answer::retry);
        EXPECT_FALSE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::passed);
        EXPECT_EQ(f.failed_rows(), std::vector<int>{});
    }
}

TEST(runport, leaves_the_power_alone_that_the_device_data_switched)
{
    engine_fixture f{50, false};
    f.session.wnote = 1;
    f.put_rows({passing});
    f.socket_shows({passing});
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.log.count("gndpin"), 1);
    EXPECT_EQ(f.log.count("vccpin"), 1);
    EXPECT_EQ(f.log.count("vccpin 0 0"), 1) << "the codes stay 0";
    EXPECT_EQ(f.log.count("gndpin 0 0"), 1);
}

TEST(runport, takes_the_registers_unless_the_flag_is_exactly_true)
{
    engine_fixture f{50, false};
    f.session.blocks.usbable(0) = 1;
    f.put_rows({passing});
    f.socket_shows({passing});
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.log.count("usbcomwrite"), 0);
}

TEST(runport, of_a_row_without_supply_letters_uses_the_code_that_comes_out)
{
    engine_fixture f{50, false};
    f.put_rows({"XXXXXXXXXXXXXX"});
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.log.count("gndpin 8 1"), 1);
    EXPECT_EQ(f.log.count("vccpin 8 1"), 1);
}

TEST(runport, a_row_wider_than_the_socket_is_an_error)
{
    engine_fixture f{50, false};
    f.put_rows({passing});
    f.session.ttl.ttlpin = 98;
    EXPECT_THROW(f.run(runport), subscript_error);
}

TEST(any_X_mismatch, passes_on_every_engine)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        for (const bool open : {false, true}) {
            engine_fixture f{23, true};
            f.put_rows({"XXXXXXGXXXXXXV"});
            const bool socket40 = engine == runport40 || engine == runbatch40;
            const std::string row = "XXXXXXGXXXXXXV";
            f.log.socket = {socket40 ? slow::ports_of_40(row, open) : slow::ports_of(row, open)};
            EXPECT_FALSE(f.run(engine));
        }
    }
}

TEST(any_Z_that_reads_low, fails_on_every_engine_and_shows_L)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        engine_fixture f{23, true};
        f.put_rows({"Z0H00HGH00H00V"});
        const bool socket40 = engine == runport40 || engine == runbatch40;
        f.log.socket = {socket40 ? slow::ports_of_40("00H00HGH00H00V") : slow::ports_of("00H00HGH00H00V")};
        EXPECT_TRUE(f.run(engine));
        ASSERT_EQ(f.shell.boxes().size(), 1u);
        EXPECT_NE(f.shell.boxes()[0].find("V0001:L0H00HGH00H00V"), std::string::npos) << f.shell.boxes()[0];
    }
}

TEST(runbatch, survives_two_lost_reads_and_not_three)
{
    engine_fixture f{50, true};
    f.let_time_pass();
    f.put_rows(nand_rows);
    f.socket_shows(nand_rows);
    f.log.bulk_ends = {bulk_end::never, bulk_end::fails};
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.log.count("usbbulkread"), 3);
    EXPECT_EQ(f.prgresult(), 0);
    EXPECT_EQ(f.outcome.what, kind::passed) << "what came at last is what counts";

    f.log.bulk_ends = {bulk_end::never, bulk_end::fails, bulk_end::never};
    EXPECT_TRUE(f.run(runbatch));
    EXPECT_EQ(f.log.count("usbbulkread"), 6);
    EXPECT_EQ(f.prgresult(), 3);
    EXPECT_EQ(f.outcome.what, kind::timed_out);
    EXPECT_EQ(f.shell.boxes(), lines{});
}

TEST(runbatch40, survives_no_lost_read)
{
    engine_fixture f{23, true};
    f.put_rows(nand_rows);
    f.log.bulk_ends = {bulk_end::fails};
    EXPECT_TRUE(f.run(runbatch40));
    EXPECT_EQ(f.log.count("usbbulkread"), 1);
    EXPECT_EQ(f.prgresult(), 3);
    EXPECT_EQ(f.outcome.what, kind::timed_out);
}

TEST(runbatch, whose_results_cannot_be_asked_for_again_ends_by_that)
{
    engine_fixture f{50, true};
    f.put_rows(nand_rows);
    f.log.bulk_ends = {bulk_end::fails};
    f.log.usbcomwrite_results = {0, 0, 1};
    EXPECT_TRUE(f.run(runbatch));
    EXPECT_EQ(f.outcome.what, kind::refused_frame);
    EXPECT_EQ(f.prgresult(), 1);
}

TEST(runbatch, does_nothing_while_a_communication_error_stands)
{
    for (const auto engine : {runbatch, runbatch40}) {
        engine_fixture f{50, true};
        f.put_rows(nand_rows);
        f.prgresult() = 3;
        EXPECT_FALSE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::not_played);
        EXPECT_EQ(f.log.lines, lines{});
        EXPECT_EQ(f.prgresult(), 3);
        EXPECT_EQ(f.session.blocks.ubuflg(0), 0);
    }
}

TEST(runbatch, ends_in_failure_where_a_frame_is_not_taken)
{
    for (const auto engine : {runbatch, runbatch40}) {
        for (const std::deque<std::int32_t>& results : {std::deque<std::int32_t>{1}, {0, 1}}) {
            engine_fixture f{50, true};
            f.put_rows(nand_rows);
            f.log.usbcomwrite_results = results;
            EXPECT_TRUE(f.run(engine));
            EXPECT_EQ(f.outcome.what, kind::refused_frame);
            EXPECT_EQ(f.prgresult(), 1);
            EXPECT_EQ(f.log.count("usbbulkread"), 0);
            EXPECT_EQ(f.log.count("vecbyte") > 0, results.size() == 2);
        }
    }
}

TEST(runbatch, says_how_long_a_block_is_and_leaves_the_rest_of_the_frame)
{
    engine_fixture f{50, true};
    f.put_rows(nand_rows);
    f.socket_shows(nand_rows);
    for (int i = 0; i < 20; ++i) f.session.blocks.ubuf1(i) = static_cast<std::uint8_t>(0xA0 + i);
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.session.blocks.ubuflg(0), 16368);
    EXPECT_EQ(f.log.lines.front(), "usbcomwrite 8: 0A 10 40 A3 A4 A5 A6 A7");
}

TEST(runbatch, reads_as_many_bytes_as_the_rows_need)
{
    for (const auto& [rows, bytes] : {std::pair{1, 129}, {9, 129}, {10, 193}, {254, 1601}}) {
        engine_fixture f{50, true};
        const lines all(static_cast<std::size_t>(rows), passing);
        f.put_rows(all);
        f.socket_shows(all);
        EXPECT_FALSE(f.run(runbatch, -1)) << rows;
        EXPECT_EQ(f.log.count("usbbulkread " + std::to_string(bytes)), 1) << rows;
    }
}

TEST(runbatch, Retry_plays_the_whole_script_again)
{
    engine_fixture f{50, true};
    f.put_rows({passing, passing});
    f.socket_shows({passing, failing, passing, passing});
    f.shell.answer_next_box(answer::retry);
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.log.count("vecgnd 1 1"), 2);
    EXPECT_EQ(f.log.count("hwreset"), 0);
}

TEST(runbatch, on_models_15_and_16_ends_by_vecvcc_what_vecvpp_began)
{
    engine_fixture f{16, true};
    f.put_rows({"00H00H0GH00H000V"});
    f.socket_shows({"00H00H0GH00H000V"});
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.log.count("vecvpp 108 1"), 1);
    EXPECT_EQ(f.log.count("vecvpp 108 0"), 0);
    EXPECT_EQ(f.log.count("vecvcc 108 0"), 1);
}

TEST(a_run_without_rows, switches_nothing_on)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        engine_fixture f{50, true};
        for (const std::int16_t rows : {1, 0}) {
            f.session.ttl.ttlcnt = rows;
            EXPECT_FALSE(f.run(engine));
        }
        for (const char* call : {"gndpin 1 1", "vccpin 107 1", "vecgnd 1 1", "vecvcc 107 1"})
            EXPECT_EQ(f.log.count(call), 0);
    }
}

TEST(run_library_vectors, picks_the_engine_by_route_and_model)
{
    for (std::int16_t model = 0; model <= 60; ++model) {
        const bool socket40 = model == 22 || model == 23 || model == 24 || model == 28 || model == 29;
        SCOPED_TRACE(model);
        engine_fixture usb{model, true};
        usb.put_rows({passing});
        run_library_vectors(usb.session, 2, 14, -1, 0);
        EXPECT_EQ(usb.log.count("vecstart"), socket40 ? 2 : 1);
        EXPECT_EQ(usb.log.count("vecdelay 20"), socket40 ? 0 : 1);

        engine_fixture registers{model, false};
        registers.put_rows({passing});
        run_library_vectors(registers.session, 2, 14, -1, 0);
        EXPECT_EQ(registers.log.count("vecstart"), 0);
        EXPECT_EQ(registers.log.count("regin 0"), 1);
    }
}

TEST(resultwait, gives_up_after_4000_ms_with_the_message_loop_alive)
{
    engine_fixture f{50, true};
    f.let_time_pass();
    f.log.bulk_ends = {bulk_end::never};
    const double before = f.shell.seconds();
    EXPECT_EQ(resultwait(f.session, 1, 0, 129), 1);
    EXPECT_NEAR(f.shell.seconds() - before, 4.0, 0.11);
    EXPECT_GE(f.shell.pumps(), 39);
    EXPECT_EQ(f.prgresult(), 3);
}

TEST(resultwait, ends_when_somebody_else_reports_a_time_out)
{
    engine_fixture f{50, true};
    f.log.bulk_ends = {bulk_end::never};
    f.shell.on_doevents = [&] { f.prgresult() = 3; };
    EXPECT_EQ(resultwait(f.session, 1, 0, 129), 1);
}

TEST(resultwait, of_a_failed_read_counts_as_a_time_out)
{
    engine_fixture f{50, true};
    f.log.bulk_ends = {bulk_end::fails};
    EXPECT_EQ(resultwait(f.session, 1, 0, 129), 1);
    EXPECT_EQ(f.prgresult(), 3);
}

TEST(resultwait, takes_length_and_target_from_the_pipe)
{
    engine_fixture f{50, true};
    EXPECT_EQ(resultwait(f.session, 1, 0, 200), 0);
    EXPECT_EQ(resultwait(f.session, 2, 0, 200), 0);
    EXPECT_EQ(resultwait(f.session, 5, 0, 200), 0);
    EXPECT_EQ(f.log.count("usbbulkread 200"), 1);
    EXPECT_EQ(f.log.count("usbbulkread 65"), 2);
    EXPECT_EQ(f.session.blocks.ibuf2(64), 170);
    f.buffer(0x1F) = 0x77;
    EXPECT_EQ(resultwait(f.session, 0, 0x10, 0x10), 0);
    EXPECT_EQ(f.session.blocks.ibuf1(0), 0x77) << "the byte that the end marker overwrites is put aside";
    EXPECT_EQ(f.buffer(0x0F), plug_in_fixture::untouched);
    EXPECT_EQ(f.buffer(0x10), 0xEE);
    EXPECT_EQ(f.buffer(0x1F), 170);
    EXPECT_EQ(f.buffer(0x20), plug_in_fixture::untouched);
}

TEST(resultwait, clears_the_last_byte_before_it_waits)
{
    engine_fixture f{50, true};
    f.let_time_pass();
    f.session.blocks.ibuf2(128) = 170;
    f.log.bulk_ends = {bulk_end::never};
    resultwait(f.session, 1, 0, 129);
    EXPECT_EQ(f.session.blocks.ibuf2(128), 0);
}

TEST(resultwait, outside_the_buffers_is_an_error)
{
    engine_fixture f{50, true};
    EXPECT_THROW(resultwait(f.session, 1, 0, 33001), subscript_error);
    EXPECT_THROW(resultwait(f.session, 1, 0, 0), subscript_error);
    EXPECT_THROW(resultwait(f.session, 0, -1, 10), subscript_error);
    EXPECT_THROW(resultwait(f.session, 0, 0x1890, 0x10), subscript_error);
    EXPECT_EQ(f.log.lines, lines{});
}

TEST(engines, without_a_programmer_say_so)
{
    engine_fixture f{50, true};
    f.session.hardware.source = {};
    f.put_rows(nand_rows);
    for (const auto engine : {runport, runport40, runbatch, runbatch40})
        EXPECT_THROW(f.run(engine), hw::programmer_error);
}

}  // namespace
}  // namespace tamrix::tests
