#include "programmer/loaded_programmer.h"

#include "base/other_side.h"
#include "channel/bulk_read.h"
#include "channel/bulk_write.h"
#include "programmer/library_symbol.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"
#include "tamrix/hardware.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <sstream>
#include <thread>

namespace tamrix::tests {

namespace {

constexpr const char* library = TAMRIX_SIM_LIBRARY;

TEST(loaded_programmer, has_the_generation_of_its_options)
{
    for (const auto& [options, reached] : {std::pair{"model 9", false}, {"model 9; generation 17", true}}) {
        plug_in_fixture f;
        f.session.hardware.source = hw::library_source(library, std::string{options} + "; fault input 1 stuck 0");
        hw::devobj& device = f.session.hardware.device();
        device.boardsel(0);
        EXPECT_EQ(device.regin(10), reached ? 254 : 255);
    }
}

TEST(loaded_programmer, is_not_loaded_before_it_is_needed)
{
    plug_in_fixture f;
    f.session.hardware.source = hw::library_source("/nowhere/programmer.so");
    EXPECT_THROW(f.session.hardware.device(), hw::programmer_error);
    f.session.hardware.source = hw::library_source(library);
    EXPECT_EQ(f.session.hardware.device().hwreset(), 0);
}

TEST(loaded_programmer, frames_and_registers_reach_it_and_replies_come_back)
{
    plug_in_fixture f;
    f.session.hardware.source = hw::library_source(library, "model 40; socket test board; speed 1000");
    hw::devobj& device = f.session.hardware.device();
    const std::array<std::uint8_t, 13> frame{5, 0xF7, 0xF7, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
    EXPECT_EQ(f.session.hardware.transport().usbcomwrite(frame.data(), 13), 0);
    EXPECT_TRUE(device.replywait(3, 0, 0));
    EXPECT_EQ(f.session.blocks.ibuf1(0), 0xE7) << "the lowest contact of either column";
    EXPECT_EQ(device.regin(0), 0xE7);
    EXPECT_FALSE(device.replywait(3, 0, 0));
    device.regout(77, 50);
    EXPECT_EQ(device.regin(50), 77);
    EXPECT_EQ(device.ctlout(5, 44), 0);
    EXPECT_EQ(device.ctlin(44), 5);
    EXPECT_EQ(device.boardsel(3), 0);
}

TEST(loaded_programmer, has_the_same_in_the_sockets_of_all_modules)
{
    plug_in_fixture f;
    f.session.hardware.source = hw::library_source(library, "model 54; socket test board; speed 1000");
    for (std::uint8_t module = 1; module <= 4; ++module) {
        const std::array<std::uint8_t, 16> frame{5,   0x08, 0xF7, 255, 255, 255, 255, 255,
                                                 255, 255,  255,  255, 255, 0,   0,   module};
        EXPECT_EQ(f.session.hardware.transport().usbcomwrite(frame.data(), 16), 0);
        EXPECT_TRUE(f.session.hardware.device().replywait(3, 0, 0));
        EXPECT_EQ(f.session.blocks.ibuf1(0), 0x18) << "the lowest contact of either column, module " << int{module};
    }
}

TEST(loaded_programmer, the_flag_of_pipe_0_is_set_by_a_reply_that_nobody_asked_for)
{
    plug_in_fixture f;
    f.session.hardware.source = hw::library_source(library, "speed 1000");
    const std::uint8_t frame[] = {9, 1};
    f.session.hardware.transport().usbcomwrite(frame, 2);
    EXPECT_TRUE(f.session.hardware.device().replywait(3, 0, 0));
    EXPECT_EQ(hw::read_other_side(f.session.blocks.usbpip0readresult(0)), bool16_false);
    f.session.hardware.transport().usbcomwrite(frame, 2);
    f.session.hardware.device().delayms(1);
    EXPECT_EQ(hw::read_other_side(f.session.blocks.usbpip0readresult(0)), bool16_true);
    EXPECT_EQ(f.session.blocks.ibuf1(0), 1);
}

TEST(loaded_programmer, takes_the_upper_bytes_of_a_divider_from_the_command_frame)
{
    const temp_folder folder;
    const std::string path = folder.path("transcript.txt");
    {
        plug_in_fixture f;
        f.session.hardware.source = hw::library_source(library, "transcript " + path);
        f.session.blocks.ubuf1(2) = 2;
        f.session.blocks.ubuf1(3) = 1;
        f.session.hardware.device().ctlout(3, 140);
    }
    EXPECT_NE(read_text(path).find("ctlout 3 -> 140\n"), std::string::npos);
    EXPECT_NE(read_text(path).find("-> divider 66051\n"), std::string::npos) << read_text(path);
}

/// What the library says to a host that hands over so many bytes of the structure.
std::string answer_to_memory_of(std::uint32_t size_bytes)
{
    std::string why;
    void* const handle = hw::load_library(library, why);
    const auto functions =
        reinterpret_cast<tamrix_hardware_functions_type>(hw::symbol_of(handle, TAMRIX_HARDWARE_SYMBOL));
    tamrix_reply_memory memory{};
    memory.size_bytes = size_bytes;
    std::array<char, 200> error{};
    tamrix_programmer* const made = functions()->create("", &memory, error.data(), error.size());
    if (made != nullptr) functions()->destroy(made);
    return made != nullptr ? "made" : error.data();
}

TEST(loaded_programmer, is_not_made_for_a_host_that_hands_over_less_memory)
{
    const std::uint32_t all = sizeof(tamrix_reply_memory);
    EXPECT_EQ(answer_to_memory_of(all - 1), "the memory for replies is that of an older interface");
    EXPECT_EQ(answer_to_memory_of(all), "made");
    EXPECT_EQ(answer_to_memory_of(all + 8), "made") << "a newer host has fields that this library does not know";
}

/// Each operation, with arguments that tell their order, seen from the library's own transcript.
TEST(loaded_programmer, every_operation_arrives_with_its_arguments)
{
    const temp_folder folder;
    const std::string path = folder.path("transcript.txt");
    {
        std::array<std::uint8_t, 20> ibuf1{};
        const auto made = hw::library_source(library, "speed 1000000; transcript " + path)({ibuf1.data(), 20});
        hw::devobj& device = made->device();
        device.setvcc(3300);
        device.setvpp(12000, 1);
        device.gndpin(1, 0);
        device.vccpin(2, 0);
        device.vpppin(3, 0);
        device.busmode(1);
        device.hwinit();
        device.ctlout(4, 5);
        device.ctlin(6);
        device.regout(7, 60);
        device.regin(61);
        device.delayms(8);
        device.delayus(9);
        device.replywait(10, 11, 12);
        device.vecout(13, 14);
        device.vecbyte(15);
        device.vecdelay(16);
        device.vecdelay2(17);
        device.vecgnd(18, 0);
        device.vecvcc(19, 0);
        device.vecvpp(20, 0);
        device.vecstart();
        device.replycheck(21);
        device.hwfault();
        device.boardsel(22);
        device.boardsel2(23, 24);
        device.hwreset();
        device.hwrelease();
        const std::uint8_t byte = 10;
        made->transport().usbbulkwrite(&byte, 1);
    }
    std::string without_times;
    std::istringstream lines{read_text(path)};
    for (std::string line; std::getline(lines, line);) without_times += line.substr(line.find("ms  ") + 4) + '\n';
    EXPECT_EQ(without_times,
              "setvcc 3300\nsetvpp 12000 1\ngndpin 1 0\nvccpin 2 0\nvpppin 3 0\nbusmode 1\nhwinit\n"
              "ctlout 4 -> 5\nctlin 6: 0\nregout 7 -> 60\nregin 61: 0\ndelayms 8\ndelayus 9\n"
              "replywait 10 11 12\n-> ibuf1 FF FF FF FF FF FF\nvecout 13 -> 14\nvecbyte 15\nvecdelay 16\n"
              "vecdelay2 17\nvecgnd 18 0\nvecvcc 19 0\nvecvpp 20 0\nvecstart\nreplycheck 21\n"
              "-> nothing came\nhwfault\nboardsel 22\nboardsel2 23 24\nhwreset\nhwrelease\n"
              "usbbulkwrite 1: 0A\nnote: a bulk write that no frame announced\n");
}

/// A session whose message pump gives the other threads a moment.
struct live_session : plug_in_fixture {
    explicit live_session(const std::string& options)
    {
        session.hardware.source = hw::library_source(library, options);
        shell.on_doevents = [this] {
            std::this_thread::sleep_for(std::chrono::microseconds{100});
            const double now = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            shell.advance(now - shell.seconds());
        };
    }
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

TEST(loaded_programmer, blocks_arrive_behind_the_readers_back)
{
    live_session f{"model 9; speed 50"};
    const std::vector<std::uint8_t> data = random_bytes(4 * 32768);
    ASSERT_TRUE(hw::begin_bulk_write(f.session, 0, hw::frame_length::bulk, 200));
    ASSERT_TRUE(hw::write_blocks(f.session, data, 32768));
    for (std::uint8_t block = 0; block < 4; ++block) {
        ASSERT_TRUE(hw::read_block(f.session, block, 32768, hw::frame_length::bulk));
        const auto got = f.session.blocks.ibuf2.span().first(32768);
        EXPECT_TRUE(std::equal(got.begin(), got.end(), data.begin() + block * 32768));
    }
    EXPECT_GT(f.shell.pumps(), 4);
}

TEST(loaded_programmer, a_read_that_never_ends_ends_by_the_limit_and_unloading_is_safe_meanwhile)
{
    plug_in_fixture f;
    f.session.hardware.source = hw::library_source(library, "fault read never ends");
    f.shell.on_doevents = [&f] { f.shell.advance(0.1); };
    EXPECT_FALSE(hw::read_block(f.session, 0, 4096, hw::frame_length::bulk));
    EXPECT_EQ(f.session.blocks.prgresult(0), 3);
}

/// One of many programmers, with memory of its own, whose bytes are its number.
struct one_of_many {
    explicit one_of_many(std::uint8_t its_number) : number{its_number}
    {
        const std::vector<std::uint8_t> data(4096, number);
        EXPECT_EQ(command(128), 0);
        EXPECT_EQ(made->transport().usbbulkwrite(data.data(), 4096), 0);
        EXPECT_EQ(command(64), 0);
        made->transport().usbbulkread(buffer.data(), 4097, &status);
    }
    std::int32_t command(std::uint8_t direction)
    {
        const std::uint8_t frame[] = {10, 0, direction};
        return made->transport().usbcomwrite(frame, 3);
    }
    bool arrived() { return hw::read_other_side(status) == 2 && hw::read_other_side(buffer.back()) == hw::end_marker; }

    std::uint8_t number, status = 0;
    std::array<std::uint8_t, 20> ibuf1{};
    std::vector<std::uint8_t> buffer = std::vector<std::uint8_t>(4097);
    std::unique_ptr<hw::programmer> made = hw::library_source(library, "speed 1")({ibuf1.data(), 20});
};

TEST(loaded_programmer, many_can_be_open_at_once_and_each_reads_its_own_memory)
{
    std::vector<std::unique_ptr<one_of_many>> open;
    for (std::uint8_t number = 1; number <= 8; ++number) open.push_back(std::make_unique<one_of_many>(number));
    for (const auto& each : open) {
        while (!each->arrived()) std::this_thread::yield();
        EXPECT_EQ(std::ranges::count(each->buffer, each->number), 4096);
    }
}

TEST(loaded_programmer, many_can_be_open_at_once_and_go_while_they_read)
{
    for (int round = 0; round < 20; ++round) {
        std::vector<std::unique_ptr<one_of_many>> open;
        for (const std::uint8_t number : {1, 2, 3}) open.push_back(std::make_unique<one_of_many>(number));
        std::this_thread::sleep_for(std::chrono::milliseconds{round / 2});
        for (const auto& each : open) {
            each->made.reset();
            each->buffer.assign(4097, 99);
            each->status = 99;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{8});  // longer than a read takes
        for (const auto& each : open) {
            EXPECT_EQ(each->status, 99) << round;
            EXPECT_EQ(std::ranges::count(each->buffer, 99), 4097) << round;
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
