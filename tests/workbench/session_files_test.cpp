// What a session loads and saves.
#include "host/file_report.h"
#include "workbench/session_fixture.h"

#include <algorithm>
#include <iterator>

using namespace tamrix;
using namespace tamrix::tests;

TEST_F(sessions, a_fuse_file_is_told_by_its_content_and_loads_with_its_note)
{
    host_session session{PLUG_IN};
    session.select(logic);
    const std::string file = write("fuses.bin", "\x02My part\nQF16*\nL0000 0101*\n");
    EXPECT_EQ(session.library().detect_pld(file.c_str()), TAMRIX_JEDEC);
    const auto told = session.load_jedec(file);
    EXPECT_FALSE(told.failed());
    EXPECT_EQ(told.note, "\n  \x02My part\n  QF16*");
    EXPECT_EQ(std::string(session.buffer().begin(), session.buffer().begin() + 5), std::string("0101\0", 5));
}

TEST_F(sessions, the_note_is_that_of_the_last_fuse_file_and_ends_with_its_first_NUL)
{
    host_session session{PLUG_IN};
    session.select(logic);
    EXPECT_EQ(session.load_jedec(write("a.jed", std::string("one\0more\nL0000 1*\n", 18))).note, "\n  one");
    EXPECT_EQ(session.load_jedec(write("b.jed", "L0000 1*\n")).note, "");
    const auto missing = session.load_jedec("/nowhere/c.jed");
    EXPECT_EQ(missing.diagnostic, "/nowhere/c.jed: no such file");
    EXPECT_EQ(missing.note, "");
    EXPECT_STREQ(session.library().jedec_note(nullptr), "");
}

TEST_F(sessions, fuses_that_cannot_be_saved_are_told_with_the_reason)
{
    host_session session{PLUG_IN};
    session.select(logic);
    EXPECT_EQ(session.save_jedec(settings.folder / "out.jed").diagnostic,
              "buffer address 0: 00 where 30 or 31 was expected");
    std::ranges::fill(session.buffer(), std::uint8_t{'1'});
    EXPECT_EQ(session.save_jedec("/nowhere/out.jed").diagnostic, "/nowhere/out.jed: no such file");
    EXPECT_EQ(session.save_jedec_as_plug_in("/nowhere/out.jed").diagnostic, "/nowhere/out.jed: no such file");
}

TEST_F(sessions, fuses_and_vectors_are_saved_in_the_form_of_the_standard)
{
    host_session session{PLUG_IN};
    session.select(logic);  // without a length of its rows
    EXPECT_FALSE(
        session.load_jedec(write("in.jed", "My part*QP4*QF16*QV1*\nL0000 0101110000001111*\nV0001 01HL*\n")).failed());
    const std::string out = settings.folder / "out.jed";
    const auto told = session.save_jedec(out);
    EXPECT_EQ(told.diagnostic, "");
    EXPECT_TRUE(told.result.ok());
    std::ifstream file{out, std::ios::binary};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    EXPECT_EQ(text.substr(0, text.find("C0")),
              "\x02TYPE: logic*\r\nQP4*\r\nQF16*\r\nQV1*\r\nF0*\r\nL0000 0101110000001111*\r\nV0001 01HL*\r\n");
    EXPECT_EQ(host::report_on(out, "jedec").damaged_places, 0u);
    EXPECT_TRUE(std::filesystem::is_empty(session.work_folder()));
    EXPECT_NE(session.save_jedec_as_plug_in(out).diagnostic, "") << "the device still has no length of its rows";
}

TEST_F(sessions, the_workbench_loads_from_an_address_by_itself)
{
    host_session session{PLUG_IN};
    session.select({.name = "part", .words = 4, .buffer_bytes = 8});
    std::ranges::fill(session.buffer(), std::uint8_t{0x5A});
    const auto report = host::report_on(write("a.bin", "0123456789"), "binary");
    EXPECT_EQ(session.load_from(report.image, 3), host::clear_choice::fill_ff);
    EXPECT_EQ(std::string(session.buffer().begin(), session.buffer().end()), "3456\xFF\xFF\xFF\xFF");
    EXPECT_EQ(std::string(session.device_memory().begin(), session.device_memory().end()), "3456");
    session.select({.name = "zero", .words = 4, .buffer_bytes = 8, .clear = host::clear_choice::fill_00});
    EXPECT_EQ(session.load_from(report.image, 9), host::clear_choice::fill_00);
    EXPECT_EQ(std::string(session.buffer().begin(), session.buffer().end()), std::string("9\0\0\0\0\0\0\0", 8));
    session.select({.name = "kept", .words = 0, .buffer_bytes = 8, .clear = host::clear_choice::none});
    EXPECT_EQ(session.load_from(report.image, 8), host::clear_choice::none);
    EXPECT_EQ(std::string(session.buffer().begin(), session.buffer().end()), "89\xFF\xFF\xFF\xFF\xFF\xFF");
    EXPECT_EQ(session.device_memory().size(), 8u) << "a device without a size has the whole buffer";
}

TEST_F(sessions, an_svf_file_is_told_by_its_content_and_goes_to_the_work_folder)
{
    host_session session{PLUG_IN};
    session.select(logic);
    const std::string file = write("vectors.txt", "! made here\nSTATE IDLE;\n");
    EXPECT_EQ(session.library().detect_pld(file.c_str()), TAMRIX_SVF);
    EXPECT_FALSE(session.import_svf(file).failed());
    EXPECT_EQ(std::filesystem::file_size(session.work_folder() + "pldtmp.svf"), 26u);
    const std::string empty = write("empty.svf", "");
    EXPECT_EQ(session.import_svf(empty).diagnostic, empty + ": an empty file");
    EXPECT_EQ(session.import_svf("/nowhere/a.svf").diagnostic, "/nowhere/a.svf: no such file");
}

TEST_F(sessions, a_file_of_no_logic_device_and_one_that_is_missing_are_none)
{
    host_session session{PLUG_IN};
    const std::string file = write("boot.hex", ":0100000011EE\n:00000001FF\n");
    EXPECT_EQ(session.library().detect_pld(file.c_str()), TAMRIX_NO_PLD);
    EXPECT_EQ(session.library().detect_format(file.c_str(), nullptr), 1);
    EXPECT_EQ(session.library().detect_pld("/nowhere/boot.hex"), TAMRIX_NO_PLD);
    EXPECT_EQ(session.library().detect_pld(nullptr), TAMRIX_NO_PLD);
}
