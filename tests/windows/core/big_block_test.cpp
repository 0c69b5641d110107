// The size of the buffer on both sides of the length from which on it has a fixed one.
#include "entry/entry_methods.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <string>

#include <windows.h>

namespace tamrix::tests {
namespace {

struct big_block : testing::Test {
    const std::string prefix = fresh_name_space();
    scripted_shell shell;
    session plug_in{shell, prefix};
    module_variables variables;
    entry_methods methods{plug_in, variables};
    block<std::uint8_t>& ibuffer = plug_in.blocks.ibuffer;

    void attach(std::int32_t buflength)
    {
        std::int16_t num = 1;
        ASSERT_TRUE(methods.bufcomopt(num).ok());
        plug_in.blocks.buflength(0) = buflength;
        ASSERT_TRUE(methods.buffercomopt(num).ok());
        ASSERT_TRUE(ibuffer.attached());
    }
    /// Pages of the mapping as the system reports them.
    std::size_t mapped_pages() const
    {
        MEMORY_BASIC_INFORMATION region{};
        ::VirtualQuery(ibuffer.mapping()->BaseAddress(), &region, sizeof region);
        return region.RegionSize / 4096;
    }
};

TEST_F(big_block, of_the_longest_buffer_that_is_mapped_whole_has_its_margin)
{
    attach(0x107FFFFF);
    EXPECT_EQ(ibuffer.mapping()->MappedSize(), 0x10800897);
    EXPECT_EQ(ibuffer.count(), 0x10800897u);
    EXPECT_EQ(mapped_pages(), 0x10801u);
    ibuffer(0x10800896) = 0xA5;
    EXPECT_EQ(static_cast<std::uint8_t*>(ibuffer.mapping()->BaseAddress())[0x10800896], 0xA5);
    EXPECT_THROW(ibuffer(0x10800897) = 0, subscript_error);
    EXPECT_TRUE(shell.boxes().empty());
}

TEST_F(big_block, of_a_longer_buffer_has_the_fixed_size)
{
    attach(0x10800000);
    EXPECT_EQ(ibuffer.mapping()->MappedSize(), 0x8400898);
    EXPECT_EQ(ibuffer.count(), 0x8400898u);
    EXPECT_EQ(mapped_pages(), 0x8401u);
    ibuffer(0x8400897) = 0xA5;
    EXPECT_THROW(ibuffer(0x8400898) = 0, subscript_error);
}

TEST_F(big_block, keeps_the_size_of_a_buffer_that_the_host_made_smaller)
{
    const std::string name = prefix + "qorfanibuffer";
    const HANDLE made = ::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 8192, name.c_str());
    attach(100000);
    EXPECT_EQ(ibuffer.mapping()->MappedSize(), 102200) << "what was asked for";
    EXPECT_EQ(mapped_pages(), 2u) << "what is there";
    ibuffer(8191) = 1;
    EXPECT_THROW(ibuffer(8192) = 1, subscript_error);
    ::CloseHandle(made);
}

}  // namespace
}  // namespace tamrix::tests
