#include "workbench/session_fixture.h"

#include <algorithm>
#include <utility>

using namespace tamrix;
using namespace tamrix::tests;
using workbench::logic_test;

TEST_F(sessions, a_new_buffer_is_blank)
{
    host_session session{PLUG_IN};
    session.select(small);
    EXPECT_EQ(content(session), std::vector<std::uint8_t>(0x100, 0xFF));
    session.select(logic);
    EXPECT_EQ(content(session), std::vector<std::uint8_t>(64, 0x00));
}

TEST_F(sessions, the_buffer_of_another_device_is_blank)
{
    host_session session{PLUG_IN};
    session.select(small);
    std::ranges::fill(session.buffer(), std::uint8_t{0x5A});
    session.select(large);
    EXPECT_EQ(content(session), std::vector<std::uint8_t>(0x400, 0xFF));
}

TEST_F(sessions, a_device_whose_buffer_cannot_be_made_leaves_the_one_before_with_its_bytes)
{
    host_session session{PLUG_IN};
    session.select(small);
    session.buffer()[3] = 7;
    const std::vector<std::uint8_t> before = content(session);
    EXPECT_THROW(session.select({.name = "odd", .words = 1, .buffer_bytes = -1}), std::invalid_argument);
    EXPECT_EQ(session.device().name, small.name);
    EXPECT_EQ(content(session), before);
}

TEST_F(sessions, attaching_anew_keeps_the_buffer)
{
    host_session session{PLUG_IN};
    session.select(small);
    session.buffer()[3] = 7;
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

TEST_F(sessions, the_buffer_is_attached_from_a_device_on_until_it_is_released)
{
    host_session session{PLUG_IN};
    EXPECT_FALSE(session.buffer_is_attached()) << "no device is selected";
    session.select(small);
    EXPECT_TRUE(session.buffer_is_attached());
    session.release_buffer();
    EXPECT_FALSE(session.buffer_is_attached());
    session.attach_buffer();
    EXPECT_TRUE(session.buffer_is_attached());
    session.release_buffer();
    session.select(large);
    EXPECT_TRUE(session.buffer_is_attached());
    session.release_buffer();
    session.attach_small();
    EXPECT_TRUE(session.buffer_is_attached());
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
    EXPECT_EQ(session.logic_tests(), std::vector{(logic_test{TAMRIX_LOGIC_PASSED, "", 2})});
    session.vector_test(false);
    EXPECT_TRUE(session.logic_tests().empty()) << "only those of the last call";
}

TEST_F(sessions, without_a_logic_test_there_is_none_to_describe)
{
    host_session session{PLUG_IN};
    session.select(logic);
    EXPECT_TRUE(session.logic_tests().empty());
    tamrix_logic_test described{};
    const auto describe = session.library().describe_logic_test;
    EXPECT_EQ(describe(nullptr, 0, &described), 0);
    session.library().propose_logic_device(nullptr, "7400");
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
