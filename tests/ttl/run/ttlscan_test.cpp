#include "ttl/run/ttlscan.h"

#include "ttl/ttl_fixture.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tamrix::tests {
namespace {

struct scan_fixture : ttl_fixture {
    scan_fixture(std::int16_t modeltype, bool usb) { use_model(modeltype, usb); }

    void scan()
    {
        ttlscan(session, variables.ttl, [this](const lines& found) {
            ++shown;
            hits = found;
        });
    }
    /// Each device finds a socket that shows these rows, or an empty one.
    void put_chip(const lines& rows)
    {
        log.read_socket = [rows, next = std::size_t{0}]() mutable {
            return slow::ports_of(rows[next++ % rows.size()]);
        };
    }

    int shown = 0;
    lines hits;
};

const forms::message_box communication_error{
    .text = "Communication error!", .title = "Auto Find Device Result", .picture = forms::icon::information};

const lines gate_rows{"00H00HGH00H00V"};

slow::device_record gate(const std::string& name) { return {name, gate_rows}; }

TEST(ttlscan, of_an_empty_socket_finds_nothing_and_says_so)
{
    for (const bool usb : {false, true}) {
        scan_fixture f{50, usb};
        f.write_library(std::vector{nand, nor});
        f.scan();
        const forms::message_box expected{
            .text = "Device Not Found!", .title = "Auto Find Device Result", .picture = forms::icon::error};
        EXPECT_EQ(f.shell.whole_boxes(), std::vector{expected});
        EXPECT_EQ(f.shown, 0);
        EXPECT_EQ(f.shell.beeps(), 0);
        EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::failed);
    }
}

TEST(ttlscan, lists_all_devices_that_share_their_vectors_in_the_order_of_the_file)
{
    scan_fixture f{50, false};
    f.put_chip(gate_rows);
    f.write_library(std::vector{gate("7437"), nor, gate("7400")});
    f.scan();
    EXPECT_EQ(f.hits, (lines{"7437", "7400"}));
    EXPECT_EQ(f.shown, 1);
    EXPECT_EQ(f.shell.beeps(), 1);
    EXPECT_EQ(f.shell.boxes(), lines{});
}

TEST(ttlscan, ends_each_device_at_its_first_failing_row_without_a_word_in_the_log)
{
    scan_fixture f{50, false};
    int rows_read = 0;
    f.log.read_socket = [&] {
        ++rows_read;
        return slow::ports_of("00L00LGL00L00V");
    };
    const lines rows{gate_rows[0], gate_rows[0], gate_rows[0]};
    f.write_library(std::vector{slow::device_record{"7437", rows}, slow::device_record{"7400", rows}});
    f.scan();
    EXPECT_EQ(rows_read, 2);
    EXPECT_EQ(f.status(), "");
}

TEST(ttlscan, leaves_the_device_in_work_alone)
{
    scan_fixture f{50, false};
    f.variables.ttl.ttlname = "kept";
    f.variables.ttl.ttlcnt = 7;
    f.variables.ttl.ttlpin = 8;
    f.write_library(std::vector{nand, nor});
    f.scan();
    EXPECT_EQ(f.variables.ttl.ttlname, "kept");
    EXPECT_EQ(f.variables.ttl.ttlcnt, 7);
    EXPECT_EQ(f.variables.ttl.ttlpin, 8);
    EXPECT_EQ(f.row(0).substr(0, 14), nor.rows[0]);
}

TEST(ttlscan, progress_never_shows_100_and_the_loop_is_served_for_each_device)
{
    for (const int count : {3, 7, 500}) {
        scan_fixture f{50, false};
        std::vector<slow::device_record> all;
        for (int i = 0; i < count; ++i) all.push_back(gate("N" + std::to_string(i)));
        f.write_library(all);
        lines seen;
        f.session.blocks.prgmode(1) = 77;
        f.shell.on_doevents = [&] { seen.push_back(std::to_string(f.session.blocks.prgmode(1))); };
        f.scan();
        ASSERT_EQ(seen.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(seen[1], std::to_string(count == 3 ? 33 : count == 7 ? 14 : 0));
        EXPECT_EQ(seen.back(), std::to_string(count == 3 ? 66 : count == 7 ? 85 : 99)) << "the fraction is cut off";
    }
}

TEST(ttlscan, without_header_or_with_hardware_in_trouble_ends_without_a_message)
{
    scan_fixture missing{50, false};
    missing.session.blocks.prgmode(1) = 5;
    missing.variables.ttl.outcome.what = run_outcome::kind::passed;  // of an earlier test
    missing.scan();
    EXPECT_EQ(missing.variables.ttl.outcome.what, run_outcome::kind::not_played);
    EXPECT_EQ(missing.log.lines, lines{});
    EXPECT_EQ(missing.session.blocks.prgmode(1), 0);
    scan_fixture absent{50, false};
    absent.write_library(std::vector{nand, nor});
    absent.log.hwreset_results = {1};
    absent.scan();
    EXPECT_EQ(absent.log.lines, (lines{"hwreset", "hwfault"}));
    EXPECT_EQ(absent.shown, 0);
    EXPECT_EQ(absent.variables.ttl.outcome.what, run_outcome::kind::no_answer);
}

TEST(ttlscan, that_meets_the_end_before_the_count_ends_without_a_message_or_a_list)
{
    for (const bool end_line : {true, false}) {
        scan_fixture f{50, false};
        f.put_chip(gate_rows);
        std::string text = slow::library_text({"7400", "7437", "7499"}, {gate("7400"), gate("7437")});
        if (!end_line) text.resize(text.size() - 9);
        f.write_library(text);
        f.scan();
        EXPECT_EQ(f.log.count("regin 0"), 2);
        EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::not_played);
        EXPECT_EQ(f.shown, 0);
        EXPECT_EQ(f.shell.boxes(), lines{});
    }
}

TEST(ttlscan, tries_no_more_devices_than_the_header_counts)
{
    scan_fixture f{50, false};
    f.put_chip(gate_rows);
    f.write_library(slow::library_text({"7400"}, {gate("7400"), gate("7437")}));
    f.scan();
    EXPECT_EQ(f.hits, lines{"7400"});
}

TEST(ttlscan, takes_any_line_with_a_dollar_sign_as_a_record)
{
    scan_fixture f{50, false};
    f.put_chip(gate_rows);
    const std::string text = slow::library_text({"7400", "7437"}, {gate("7400"), gate("7437")});
    f.write_library(text.substr(0, text.find("\r\n") + 2) + "a plain line\r\na price in $\r\n" + gate("7400").line() +
                    "\r\nend-ksm\r\n");
    f.scan();
    EXPECT_EQ(f.hits, (lines{"price in $", "7400"})) << "no rows, so nothing failed";
}

TEST(ttlscan, of_a_library_without_devices_finds_nothing)
{
    scan_fixture f{50, false};
    f.write_library("$KSM00000000000*\r\nend-ksm\r\n");
    f.scan();
    EXPECT_EQ(f.shell.boxes(), lines{"Device Not Found!"});
}

TEST(ttlscan, switches_the_board_over_USB_on_a_change_of_family)
{
    scan_fixture f{40, true};
    f.write_library(std::vector{gate("4011"), gate("4511"), gate("7400"), gate("7402"), gate("NP1"), gate("7404")});
    f.scan();
    lines boards;
    for (const std::string& line : f.log.lines)
        if (line.starts_with("boardsel2")) boards.push_back(line);
    EXPECT_EQ(boards, (lines{"boardsel2 3 45", "boardsel2 3 0", "boardsel2 3 45", "boardsel2 3 0"}));
}

TEST(ttlscan, without_USB_stays_on_its_first_board)
{
    scan_fixture f{40, false};
    f.write_library(std::vector{gate("7400"), gate("4011")});
    f.scan();
    EXPECT_EQ(f.log.count("boardsel2"), 1);
    EXPECT_EQ(f.log.count("boardsel2 3 45"), 1);
}

TEST(ttlscan, below_model_40_selects_no_board)
{
    scan_fixture f{30, true};
    f.write_library(std::vector{gate("7400"), gate("4011")});
    f.scan();
    EXPECT_EQ(f.log.count("boardsel2"), 0);
    EXPECT_EQ(f.log.lines[0] + f.log.lines[1] + f.log.lines[2], "hwresetbusmode 0setvcc 5000");
}

TEST(ttlscan, after_a_lost_read_lists_every_later_device)
{
    scan_fixture f{50, true};
    f.shell.on_doevents = [&] { f.shell.advance(0.5); };
    f.session.blocks.prgresult(0) = 3;  // from an earlier test
    f.write_library(std::vector{nand, nor, gate("7408"), gate("7410")});
    f.log.bulk_ends = {bulk_end::arrives, bulk_end::never, bulk_end::never, bulk_end::never};
    f.scan();
    EXPECT_EQ(f.hits, (lines{"7408", "7410"}));
    EXPECT_EQ(f.log.count("usbbulkread"), 4) << "the later ones are not played at all";
    EXPECT_EQ(f.shell.whole_boxes(), std::vector{communication_error}) << "once, though two were not played";
    EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::timed_out);
}

TEST(ttlscan, survives_lost_reads_that_the_engine_survives_without_a_word)
{
    scan_fixture f{50, true};
    f.shell.on_doevents = [&] { f.shell.advance(0.5); };
    f.write_library(std::vector{gate("7408"), nor});
    f.put_chip(gate_rows);
    f.log.bulk_ends = {bulk_end::never, bulk_end::fails, bulk_end::arrives};
    f.scan();
    EXPECT_EQ(f.hits, lines{"7408"});
    EXPECT_EQ(f.shell.boxes(), lines{});
    EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::passed);
}

TEST(ttlscan, tells_once_that_frames_were_not_taken_and_goes_on)
{
    scan_fixture f{50, true};
    f.write_library(std::vector{gate("7408"), gate("7410"), gate("7420")});
    f.put_chip(gate_rows);
    f.log.usbcomwrite_results = {1, 1};
    f.scan();
    EXPECT_EQ(f.hits, lines{"7420"});
    EXPECT_EQ(f.shell.whole_boxes(), std::vector{communication_error});
    EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::refused_frame);
}

TEST(ttlscan, tells_a_communication_error_before_it_says_that_nothing_was_found_and_in_a_damaged_library_too)
{
    scan_fixture f{50, true};
    f.write_library(std::vector{gate("7408")});
    f.log.usbcomwrite_results = {1};
    f.scan();
    EXPECT_EQ(f.shell.boxes(), (lines{"Communication error!", "Device Not Found!"}));

    scan_fixture cut{50, true};
    cut.write_library(slow::library_text({"7400", "7437"}, {gate("7400")}));
    cut.log.usbcomwrite_results = {1};
    cut.scan();
    EXPECT_EQ(cut.shell.whole_boxes(), std::vector{communication_error});
    EXPECT_EQ(cut.variables.ttl.outcome.what, run_outcome::kind::refused_frame);
}

TEST(ttlscan, plays_40_positions_on_their_models)
{
    scan_fixture f{23, true};
    std::filesystem::copy_file(f.files.write("x", slow::library_text({nand, nor})), f.files.path("lib1/test190.lib"));
    f.socket40_shows(nand_rows);
    f.scan();
    EXPECT_EQ(f.hits, lines{"7400"});
}

TEST(mnutestautofind0, shows_the_result_dialog_with_the_hits)
{
    scan_fixture f{50, false};
    struct result_dialog final : forms::form {
        forms::layout arrangement() override { return forms::column({}); }
    };
    lines shown;
    dialog_table dialogs;
    dialogs.add("ttlautotest", [&](tamrix::session&, module_variables& variables) {
        shown = variables.ttl.hits;
        return std::make_unique<result_dialog>();
    });
    entry_methods methods{f.session, f.variables, dialogs};
    f.put_chip(gate_rows);
    f.write_library(std::vector{gate("7437"), nor});
    std::string folder = f.files.path("");
    EXPECT_TRUE(methods.mnutestautofind0(folder).ok());
    EXPECT_EQ(shown, lines{"7437"});
    EXPECT_EQ(f.shell.dialogs_shown(), 1);
}

TEST(mnutestautofind0, without_a_programmer_is_a_failed_call)
{
    scan_fixture f{50, false};
    f.session.hardware.source = {};
    f.write_library(std::vector{nand, nor});
    std::string folder = f.files.path("");
    EXPECT_EQ(f.methods.mnutestautofind0(folder).error, "no programmer is attached");
}

}  // namespace
}  // namespace tamrix::tests
