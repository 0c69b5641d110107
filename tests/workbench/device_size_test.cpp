#include "workbench/device_size.h"

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::workbench;

TEST(device_sizes, are_in_the_largest_unit_that_leaves_no_rest)
{
    EXPECT_EQ(size_text(0), "0 bytes");
    EXPECT_EQ(size_text(1), "1 byte");
    EXPECT_EQ(size_text(0x3FF), "1023 bytes");
    EXPECT_EQ(size_text(0x400), "1 KiB");
    EXPECT_EQ(size_text(0x401), "1025 bytes");
    EXPECT_EQ(size_text(0x8000), "32 KiB");
    EXPECT_EQ(size_text(0x100000), "1 MiB");
    EXPECT_EQ(size_text(0x100400), "1025 KiB");
    EXPECT_EQ(size_text(0x10800000), "264 MiB");
}

TEST(device_sizes, of_a_logic_device_are_its_fuses)
{
    const host::device_preset gal{.name = "G", .algorithm = "GAL", .words = 2194, .buffer_bytes = 4096};
    EXPECT_EQ(size_text(gal), "2194 fuses");
    EXPECT_EQ(buffer_text(gal), "2194 fuses");
}

TEST(device_sizes, of_a_memory_are_those_of_what_it_holds_and_of_its_buffer)
{
    const host::device_preset pic{
        .name = "P", .algorithm = "PIC", .words = 0x200, .word_bytes = 2, .spare_units = 1, .buffer_bytes = 0x800};
    EXPECT_EQ(size_text(pic), "1040 bytes");
    EXPECT_EQ(buffer_text(pic), "buffer of 2 KiB");
}
