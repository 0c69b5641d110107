// POSIX only: looks at /dev/shm; tests/windows has the like.
#include "blocks/clsMemMapped.h"

#include "support/plug_in_fixture.h"
#include "support/shared_objects.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tamrix {
namespace {

using tests::plain_object;
using tests::shared_objects;
using names = std::vector<std::string>;

struct mapped_memory : testing::Test {
    const std::string prefix = tests::fresh_name_space();
    clsMemMapped block{prefix};

    static std::uint8_t* bytes(const clsMemMapped& which) { return static_cast<std::uint8_t*>(which.BaseAddress()); }
    std::string object(const std::string& name) const { return prefix + name; }
    /// Nothing is mapped, and everything reads so.
    void expect_empty() const
    {
        EXPECT_EQ(block.hFile(), 0);
        EXPECT_EQ(block.BaseAddress(), nullptr);
        EXPECT_EQ(block.MappedFile(), "");
        EXPECT_EQ(block.MappedSize(), 0);
        EXPECT_EQ(block.reach_bytes(), 0u);
    }
    void TearDown() override
    {
        block.UnMapFile();
        EXPECT_EQ(shared_objects(prefix), names{});
    }
};

TEST_F(mapped_memory, is_empty_at_first) { expect_empty(); }

TEST_F(mapped_memory, tells_what_is_mapped_and_forgets_it_when_it_is_unmapped)
{
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 40));
    EXPECT_NE(block.hFile(), 0);
    EXPECT_NE(block.BaseAddress(), nullptr);
    EXPECT_EQ(block.MappedFile(), "a");
    EXPECT_EQ(block.MappedSize(), 40);
    EXPECT_EQ(shared_objects(prefix), names{object("a")});
    EXPECT_TRUE(block.UnMapFile());
    expect_empty();
}

TEST_F(mapped_memory, is_the_same_for_two_that_open_one_name)
{
    clsMemMapped other{prefix}, elsewhere{prefix + "x"};
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 40));
    ASSERT_TRUE(other.OpenAndMapMemoryBlock("a", 40));
    ASSERT_TRUE(elsewhere.OpenAndMapMemoryBlock("a", 40));
    bytes(block)[39] = 17;
    EXPECT_EQ(bytes(other)[39], 17);
    EXPECT_EQ(bytes(elsewhere)[39], 0);
    other.UnMapFile();
    elsewhere.UnMapFile();
}

TEST_F(mapped_memory, with_nothing_mapped_is_not_unmapped)
{
    EXPECT_FALSE(block.UnMapFile());
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 40));
    EXPECT_TRUE(block.UnMapFile());
    EXPECT_FALSE(block.UnMapFile());
}

TEST_F(mapped_memory, gives_the_first_mapping_back_before_it_opens_a_second)
{
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("first", 40));
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("second", 8192));
    EXPECT_EQ(shared_objects(prefix), names{object("second")});
    EXPECT_EQ(block.MappedFile(), "second");
    EXPECT_EQ(block.MappedSize(), 8192);
    EXPECT_EQ(block.reach_bytes(), 8192u);

    bytes(block)[0] = 17;
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("second", 8192));
    EXPECT_EQ(bytes(block)[0], 0) << "its last user had let it go in between";
}

TEST_F(mapped_memory, of_a_name_in_use_keeps_the_old_size_and_reports_the_new_one)
{
    clsMemMapped maker{prefix};
    ASSERT_TRUE(maker.OpenAndMapMemoryBlock("a", 40));
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 100000));
    EXPECT_EQ(block.MappedSize(), 100000);
    EXPECT_EQ(block.reach_bytes(), 4096u);
    EXPECT_EQ(std::filesystem::file_size("/dev/shm/" + object("a")), 40u);
    maker.UnMapFile();
}

TEST_F(mapped_memory, whose_view_failed_keeps_its_handle_and_nothing_else)
{
    const plain_object empty{object("empty"), 0};
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("empty", 40));
    EXPECT_NE(block.hFile(), 0);
    EXPECT_EQ(block.BaseAddress(), nullptr);
    EXPECT_EQ(block.MappedFile(), "");
    EXPECT_EQ(block.MappedSize(), 0);
    EXPECT_FALSE(block.UnMapFile());
    EXPECT_NE(block.hFile(), 0);
}

TEST_F(mapped_memory, opens_the_next_name_after_a_view_that_failed)
{
    const plain_object empty{object("empty"), 0};
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("empty", 40));
    const auto handles = [] {
        return std::distance(std::filesystem::directory_iterator{"/proc/self/fd"},
                             std::filesystem::directory_iterator{});
    };
    const auto before = handles();
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("a", 40));
    EXPECT_EQ(handles(), before) << "the handle without a view is given back";
    EXPECT_EQ(block.MappedFile(), "a");
}

TEST_F(mapped_memory, that_can_be_neither_opened_nor_created_is_empty)
{
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("no/such/name", 40));
    expect_empty();
    EXPECT_FALSE(block.OpenAndMapMemoryBlock(std::string(300, 'x'), 40));
    expect_empty();
}

TEST_F(mapped_memory, of_no_bytes_is_not_created)
{
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("a", 0));
    EXPECT_FALSE(block.OpenAndMapMemoryBlock("a", -1));
    expect_empty();
}

TEST_F(mapped_memory, of_no_bytes_is_opened_where_it_exists)
{
    clsMemMapped maker{prefix};
    ASSERT_TRUE(maker.OpenAndMapMemoryBlock("a", 40));
    EXPECT_TRUE(block.OpenAndMapMemoryBlock("a", 0));
    EXPECT_EQ(block.MappedSize(), 0);
    EXPECT_EQ(block.reach_bytes(), 4096u);
    maker.UnMapFile();
}

TEST_F(mapped_memory, is_unmapped_when_its_owner_goes)
{
    {
        clsMemMapped short_lived{prefix};
        ASSERT_TRUE(short_lived.OpenAndMapMemoryBlock("a", 40));
    }
    EXPECT_EQ(shared_objects(prefix), names{});
}

TEST_F(mapped_memory, finds_instance_0_where_no_instance_is_set_up) { EXPECT_EQ(block.findnum(), 0); }

TEST_F(mapped_memory, finds_the_first_free_instance_number)
{
    std::vector<std::unique_ptr<clsMemMapped>> instances;
    for (const char* name : {"qorfanibuf10", "qorfanibuf11", "qorfanibuf12", "qorfanibuf14"}) {
        instances.push_back(std::make_unique<clsMemMapped>(prefix));
        ASSERT_TRUE(instances.back()->OpenAndMapMemoryBlock(name, 400));
    }
    clsMemMapped prober{prefix};
    EXPECT_EQ(prober.findnum(), 3);
    EXPECT_EQ(prober.findnum(), 3) << "looking takes nothing away";
}

TEST_F(mapped_memory, keeps_open_what_it_met_on_the_way_to_a_free_number)
{
    auto instance = std::make_unique<clsMemMapped>(prefix);
    ASSERT_TRUE(instance->OpenAndMapMemoryBlock("qorfanibuf10", 400));
    {
        clsMemMapped prober{prefix};
        EXPECT_EQ(prober.findnum(), 1);
        EXPECT_EQ(prober.hFile(), 0);
        EXPECT_FALSE(prober.UnMapFile()) << "nothing is mapped";
        instance.reset();
        EXPECT_EQ(shared_objects(prefix), names{object("qorfanibuf10")});
        EXPECT_EQ(prober.findnum(), 1);
    }
    EXPECT_EQ(block.findnum(), 0);
}

TEST_F(mapped_memory, finds_101_where_all_instances_are_taken)
{
    std::vector<std::unique_ptr<plain_object>> instances;
    for (int i = 0; i <= 100; ++i)
        instances.push_back(std::make_unique<plain_object>(object("qorfanibuf1" + std::to_string(i)), 400));
    EXPECT_EQ(clsMemMapped{prefix}.findnum(), 101);
    instances.pop_back();
    EXPECT_EQ(clsMemMapped{prefix}.findnum(), 100);
}

}  // namespace
}  // namespace tamrix
