#include "support/own_settings.h"
#include "workbench/host_session.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix;
using workbench::host_session;

namespace {

class sessions : public testing::Test {
protected:
    const tests::own_settings settings;
    const host::device_preset small{.name = "small", .words = 0x100, .buffer_bytes = 0x100};
    const host::device_preset large{.name = "large", .words = 0x400, .buffer_bytes = 0x400};
    const host::device_preset logic{
        .name = "logic", .words = 16, .buffer_bytes = 64, .clear = host::clear_choice::fill_00};

    std::string write(const char* name, const std::string& content) const
    {
        std::filesystem::create_directories(settings.folder);
        const std::filesystem::path path = settings.folder / name;
        std::ofstream{path, std::ios::binary} << content;
        return path;
    }
    static std::size_t shared_objects()
    {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator{"/dev/shm"}) {
            count += entry.path().filename().string().starts_with(std::getenv("TAMRIX_NAMESPACE")) ? 1 : 0;
        }
        return count;
    }
};

std::vector<std::uint8_t> content(host_session& session) { return {session.buffer().begin(), session.buffer().end()}; }

}  // namespace

TEST_F(sessions, a_new_buffer_is_blank)
{
    host_session session{PLUG_IN};
    session.select(small);
    EXPECT_EQ(content(session), std::vector<std::uint8_t>(0x100, 0xFF));
    session.select(logic);
    EXPECT_EQ(content(session), std::vector<std::uint8_t>(64, 0x00));
}

TEST_F(sessions, what_was_put_into_the_buffer_stays_when_the_device_changes)
{
    host_session session{PLUG_IN};
    session.select(small);
    std::ranges::fill(session.buffer(), std::uint8_t{0x5A});
    session.buffer_is_in_use();
    session.select(large);
    std::vector<std::uint8_t> expected(0x400, 0xFF);
    std::fill_n(expected.begin(), 0x100, std::uint8_t{0x5A});
    EXPECT_EQ(content(session), expected);
    session.select(logic);
    EXPECT_EQ(content(session), std::vector<std::uint8_t>(64, 0x5A));
}

TEST_F(sessions, attaching_anew_keeps_the_buffer)
{
    host_session session{PLUG_IN};
    session.select(small);
    session.buffer()[3] = 7;
    session.buffer_is_in_use();
    const std::vector<std::uint8_t> before = content(session);
    EXPECT_TRUE(session.release_buffer().result.ok());
    EXPECT_TRUE(session.attach_buffer().result.ok());
    EXPECT_EQ(content(session), before);
    EXPECT_TRUE(session.attach_small().result.ok());
    EXPECT_EQ(content(session), before);
}

TEST_F(sessions, nothing_stays_behind)
{
    std::string folder;
    {
        host_session session{PLUG_IN};
        session.select(small);
        folder = session.work_folder();
        EXPECT_EQ(shared_objects(), 62u);
        EXPECT_TRUE(std::filesystem::is_directory(folder));
    }
    EXPECT_EQ(shared_objects(), 0u);
    EXPECT_FALSE(std::filesystem::exists(folder));
}

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
    session.select(large);
    EXPECT_EQ(session.buffer()[1], '1') << "fuses that were loaded stay when the device changes";
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
    std::ranges::fill(session.buffer(), std::uint8_t{'1'});
    EXPECT_EQ(session.save_jedec("/nowhere/out.jed").diagnostic, "/nowhere/out.jed: no such file");
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

TEST_F(sessions, the_plug_in_tells_which_methods_work)
{
    host_session session{PLUG_IN};
    session.select(small);
    EXPECT_TRUE(session.offers("readfile0"));
    EXPECT_TRUE(session.offers("wfile"));
    EXPECT_FALSE(session.offers("nothing of the kind"));
}

TEST_F(sessions, the_language_is_that_of_the_next_call_and_stays_when_the_blocks_are_attached_anew)
{
    host_session session{PLUG_IN};
    session.select(small);
    EXPECT_EQ(session.library().has_language(0), 1);
    EXPECT_EQ(session.library().has_language(15000), 1);
    EXPECT_EQ(session.library().has_language(36000), 0);
    EXPECT_EQ(session.library().has_language(1), 0);
    const auto parameters = [](Clstamrix& plug_in) { return plug_in.algoparameter0(); };
    session.use_language(36000);
    EXPECT_EQ(session.run(parameters).result.error, "no text with number 37016") << "no text, and nothing breaks";
    EXPECT_TRUE(session.attach_small().result.ok());
    EXPECT_EQ(session.run(parameters).result.error, "no text with number 37016");
    session.use_language(15000);
    EXPECT_EQ(session.language(), 15000);
}

TEST_F(sessions, a_device_with_a_note_of_another_number_shows_nothing)
{
    host_session session{PLUG_IN};
    session.select({.name = "plain", .words = 16, .buffer_bytes = 16});
    EXPECT_TRUE(session.show_note().cancelled());
    session.select({.name = "odd", .words = 16, .buffer_bytes = 16, .note = 26});
    EXPECT_TRUE(session.show_note().cancelled());
}

TEST_F(sessions, a_note_without_a_box_leaves_its_line_on_the_external_supply)
{
    host_session session{PLUG_IN};
    session.use_programmer({.model = 23});
    session.select({.name = "hungry", .words = 16, .buffer_bytes = 16, .note = 128 + 19});
    EXPECT_EQ(session.show_note().lines, ">>Note! Need AC adaptor!\n");
    EXPECT_EQ(session.device().note, 128 + 19) << "the device still asks for it";
}

TEST_F(sessions, the_vectors_of_a_device_are_those_of_its_fuse_file)
{
    host_session session{PLUG_IN};
    session.select(logic);
    EXPECT_EQ(session.vector_count(), 0);
    session.load_jedec(write("a.jed", "L0000 0101*\nV0001 01*\nV0002 10*\n"));
    EXPECT_EQ(session.vector_count(), 2);
    session.load_jedec(write("b.jed", "L0000 0101*\n"));
    EXPECT_EQ(session.vector_count(), 0);
    EXPECT_EQ(session.library().vector_count(nullptr), 0);
}

TEST_F(sessions, a_vector_test_without_a_programmer_does_nothing_and_one_with_it_tells_how_it_ended)
{
    host_session session{PLUG_IN};
    host::device_preset two_pins = logic;
    two_pins.pins = two_pins.vcc_pin = 2;
    two_pins.gnd_pin = 1;
    session.select(two_pins);
    session.load_jedec(write("a.jed", "L0000 0101*\nV0001 NN*\n"));
    EXPECT_TRUE(session.vector_test(false).cancelled());
    session.use_programmer({.library = SIMULATOR});
    const auto told = session.vector_test(true);
    EXPECT_EQ(told.result.error, "");
    EXPECT_EQ(told.lines, ">> Vector Test OK!\n");
}

TEST_F(sessions, without_a_self_test_there_is_no_report_of_one)
{
    host_session session{PLUG_IN};
    session.select(logic);
    EXPECT_EQ(session.last_selftest(), std::pair(TAMRIX_SELFTEST_NONE, std::string{}));
    EXPECT_EQ(session.library().last_selftest(nullptr), TAMRIX_SELFTEST_NONE);
    EXPECT_STREQ(session.library().selftest_report(nullptr), "");
}

TEST_F(sessions, a_plug_in_that_is_missing_is_told_with_its_path)
{
    try {
        host_session session{"/nowhere/libtamrix.so"};
        ADD_FAILURE();
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string{error.what()}.find("/nowhere/libtamrix.so"), std::string::npos);
    }
}

namespace {

/// Why auto find does not begin. No dialog is shown: the programmer is asked for first.
std::string why_not(host_session& session)
{
    std::string folder = DATA "/";
    return session.run([&](Clstamrix& plug_in) { return plug_in.mnutestautofind0(folder); }).result.error;
}

}  // namespace

TEST_F(sessions, without_a_programmer_the_method_says_so)
{
    host_session session{PLUG_IN};
    EXPECT_EQ(why_not(session), "no programmer is attached");
}

TEST_F(sessions, a_programmer_that_cannot_be_had_is_told_with_the_reason)
{
    host_session session{PLUG_IN};
    session.use_programmer({.library = "/nowhere.so"});
    EXPECT_EQ(why_not(session), "programmer library /nowhere.so: /nowhere.so: cannot open shared object file: No such "
                                "file or directory");
    session.use_programmer({.library = SIMULATOR, .options = "socket moon"});
    EXPECT_EQ(why_not(session), "programmer library " SIMULATOR ": socket \"moon\": empty or test board was expected, "
                                "or an entry \"chips FOLDER\"");
    session.use_programmer({});
    EXPECT_EQ(why_not(session), "no programmer is attached");
}

TEST_F(sessions, the_programmer_of_the_environment_is_taken_where_none_is_named)
{
    setenv("TAMRIX_PROGRAMMER", "/from/environment.so", 1);
    host_session session{PLUG_IN};
    const std::string by_itself = why_not(session);
    session.use_programmer({.library = "/named.so"});
    const std::string named = why_not(session);
    session.use_programmer({});
    const std::string again = why_not(session);
    unsetenv("TAMRIX_PROGRAMMER");
    EXPECT_TRUE(by_itself.starts_with("programmer library /from/environment.so: ")) << by_itself;
    EXPECT_TRUE(named.starts_with("programmer library /named.so: ")) << named;
    EXPECT_EQ(again, by_itself);
}

TEST_F(sessions, the_programmer_stays_the_same_when_the_blocks_are_attached_anew)
{
    host_session session{PLUG_IN};
    session.use_programmer({.library = SIMULATOR, .options = "socket moon", .model = 22, .usb = false});
    const std::string before = why_not(session);
    EXPECT_TRUE(session.attach_small().result.ok());
    EXPECT_EQ(why_not(session), before);
    EXPECT_EQ(session.programmer().model, 22);
    EXPECT_FALSE(session.programmer().usb);
}
