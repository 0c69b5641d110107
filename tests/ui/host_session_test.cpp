#include "own_settings.h"
#include "workbench/host_session.h"

#include <algorithm>
#include <filesystem>
#include <string>
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

TEST_F(sessions, the_plug_in_tells_which_methods_work)
{
    host_session session{PLUG_IN};
    session.select(small);
    EXPECT_TRUE(session.offers("readfile0"));
    EXPECT_TRUE(session.offers("wfile"));
    EXPECT_FALSE(session.offers("nothing of the kind"));
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
