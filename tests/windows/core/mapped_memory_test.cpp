#include "blocks/clsMemMapped.h"
#include "open_handles.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <windows.h>

namespace tamrix::tests {
namespace {

/// A mapping that another program made, by the calls that it would use.
class foreign_mapping {
public:
    foreign_mapping(const std::string& name, DWORD bytes)
        : handle_{::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, bytes, name.c_str())}
    {}
    ~foreign_mapping() { ::CloseHandle(handle_); }
    foreign_mapping(const foreign_mapping&) = delete;
    foreign_mapping& operator=(const foreign_mapping&) = delete;

private:
    HANDLE handle_;
};

bool exists(const std::string& name)
{
    const HANDLE found = ::OpenFileMappingA(FILE_MAP_READ, FALSE, name.c_str());
    if (found != nullptr) ::CloseHandle(found);
    return found != nullptr;
}

struct mapped_memory : testing::Test {
    const std::string prefix = fresh_name_space();
    clsMemMapped block{prefix};

    static std::uint8_t* bytes(const clsMemMapped& which) { return static_cast<std::uint8_t*>(which.BaseAddress()); }
    void expect_empty() const
    {
        EXPECT_EQ(block.hFile(), 0u);
        EXPECT_EQ(block.BaseAddress(), nullptr);
        EXPECT_EQ(block.MappedFile(), "");
        EXPECT_EQ(block.MappedSize(), 0);
        EXPECT_EQ(block.reach_bytes(), 0u);
    }
};

TEST_F(mapped_memory, tells_what_is_mapped_and_forgets_it_when_it_is_unmapped)
{
    expect_empty();
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 40));
    EXPECT_NE(block.hFile(), 0u);
    EXPECT_EQ(block.MappedFile(), "a");
    EXPECT_EQ(block.MappedSize(), 40);
    EXPECT_EQ(block.reach_bytes(), 4096u);
    EXPECT_TRUE(exists(prefix + "a"));
    EXPECT_TRUE(block.UnMapFile());
    EXPECT_FALSE(exists(prefix + "a"));
    expect_empty();
    EXPECT_FALSE(block.UnMapFile());
}

TEST_F(mapped_memory, is_the_same_for_two_that_open_one_name)
{
    clsMemMapped other{prefix};
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 40));
    ASSERT_TRUE(other.OpenAndMapMemoryBlock("a", 40));
    bytes(block)[39] = 17;
    EXPECT_EQ(bytes(other)[39], 17);
}

TEST_F(mapped_memory, gives_the_first_mapping_back_before_it_opens_a_second)
{
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("first", 40));
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("second", 8192));
    EXPECT_FALSE(exists(prefix + "first"));
    EXPECT_EQ(block.MappedFile(), "second");
    EXPECT_EQ(block.reach_bytes(), 8192u);
}

TEST_F(mapped_memory, of_a_name_in_use_keeps_the_old_size_and_reports_the_new_one)
{
    const foreign_mapping made{prefix + "a", 40};
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 100000));
    EXPECT_EQ(block.MappedSize(), 100000);
    EXPECT_EQ(block.reach_bytes(), 4096u);
}

TEST_F(mapped_memory, of_no_bytes_is_opened_where_it_exists_and_never_created)
{
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("a", 0));
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("a", -1));
    expect_empty();
    const foreign_mapping made{prefix + "a", 40};
    EXPECT_TRUE(block.OpenAndMapMemoryBlock("a", 0));
    EXPECT_EQ(block.MappedSize(), 0);
}

TEST_F(mapped_memory, is_not_made_under_a_name_that_is_something_else)
{
    const HANDLE mutex = ::CreateMutexA(nullptr, FALSE, (prefix + "a").c_str());
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("a", 40));
    expect_empty();
    ::CloseHandle(mutex);
}

TEST_F(mapped_memory, is_unmapped_when_its_owner_goes)
{
    {
        clsMemMapped short_lived{prefix};
        ASSERT_TRUE(short_lived.OpenAndMapMemoryBlock("a", 40));
        EXPECT_TRUE(exists(prefix + "a"));
    }
    EXPECT_FALSE(exists(prefix + "a"));
}

TEST_F(mapped_memory, finds_the_first_free_instance_number)
{
    EXPECT_EQ(block.findnum(), 0);
    std::vector<std::unique_ptr<foreign_mapping>> instances;
    for (int i = 0; i <= 100; ++i) {
        instances.push_back(std::make_unique<foreign_mapping>(prefix + "qorfanibuf1" + std::to_string(i), 400));
    }
    const long open_before = open_handles();
    {
        clsMemMapped prober{prefix};
        EXPECT_EQ(prober.findnum(), 101);
        EXPECT_EQ(open_handles(), open_before + 101) << "what it probed stays open";
        instances[3].reset();
        EXPECT_TRUE(exists(prefix + "qorfanibuf13"));
        EXPECT_EQ(prober.findnum(), 101);
    }
    EXPECT_EQ(open_handles(), open_before - 1);
    EXPECT_EQ(block.findnum(), 3);
}

TEST(shared_blocks, have_the_names_of_the_instance_and_go_away_with_it)
{
    const std::string prefix = fresh_name_space();
    scripted_shell shell;
    {
        session plug_in{shell, prefix};
        plug_in.blocks.attachsmall(12);
        plug_in.blocks.attachbig(5000);
        for (const auto& line : small_blocks)
            EXPECT_TRUE(exists(prefix + "qorfan" + std::string{line.name} + "12")) << line.name;
        EXPECT_TRUE(exists(prefix + "qorfanibuffer"));
        EXPECT_TRUE(exists(prefix + "qorfanibuffer66"));
        EXPECT_EQ(plug_in.blocks.ICnum(79), 0) << "a page carries it";
        EXPECT_TRUE(shell.boxes().empty());
        plug_in.blocks.releasebig();
        EXPECT_FALSE(exists(prefix + "qorfanibuffer"));
    }
    EXPECT_FALSE(exists(prefix + "qorfanibuf112"));
}

}  // namespace
}  // namespace tamrix::tests
