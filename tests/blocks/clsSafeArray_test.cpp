#include "blocks/clsSafeArray.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tamrix {
namespace {

struct overlay : testing::Test {
    std::int32_t own[2] = {1, 2}, foreign[4] = {10, 20, 30, 40};
    array_descriptor<2> array;
    array_descriptor<2> original;
    clsSafeArray over;

    overlay()
    {
        array.header.features = 0x0002;
        array.header.element_bytes = 4;
        array.header.locks = 5;
        array.header.data = own;
        array.bounds[0] = {.count = 2, .lower = 0};
        array.bounds[1] = {.count = 1, .lower = -3};
        std::memcpy(&original, &array, sizeof array);
    }

    void expect_original() const
    {
        EXPECT_EQ(array.header.dimensions, original.header.dimensions);
        EXPECT_EQ(array.header.features, original.header.features);
        EXPECT_EQ(array.header.element_bytes, original.header.element_bytes);
        EXPECT_EQ(array.header.locks, original.header.locks);
        EXPECT_EQ(array.header.data, original.header.data);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(array.bounds[i].count, original.bounds[i].count);
            EXPECT_EQ(array.bounds[i].lower, original.bounds[i].lower);
        }
    }
};

TEST_F(overlay, reads_the_fields_of_the_attached_array)
{
    over.AttachToArray(&array.header);
    EXPECT_EQ(over.Dimensions(), 2);
    EXPECT_EQ(over.Features(), 0x0002);
    EXPECT_EQ(over.SizeofElements(), 4u);
    EXPECT_EQ(over.PointerToData(), own);
    EXPECT_EQ(over.CountOfElements(1), 2u);
    EXPECT_EQ(over.LowerBound(1), 0);
    EXPECT_EQ(over.CountOfElements(2), 1u);
    EXPECT_EQ(over.LowerBound(2), -3);
}

TEST_F(overlay, writes_the_fields_of_the_attached_array)
{
    over.AttachToArray(&array.header);
    over.Dimensions(1);
    over.Features(0x0100);
    over.SizeofElements(2);
    over.Locks(9);
    over.PointerToData(foreign);
    over.CountOfElements(1, 4);
    over.LowerBound(1, 7);
    over.CountOfElements(2, 5);
    over.LowerBound(2, 6);
    EXPECT_EQ(array.header.dimensions, 1);
    EXPECT_EQ(array.header.features, 0x0100);
    EXPECT_EQ(array.header.element_bytes, 2u);
    EXPECT_EQ(array.header.locks, 9u);
    EXPECT_EQ(array.header.data, foreign);
    EXPECT_EQ(array.bounds[0].count, 4u);
    EXPECT_EQ(array.bounds[0].lower, 7);
    EXPECT_EQ(array.bounds[1].count, 5u);
    EXPECT_EQ(array.bounds[1].lower, 6);
}

TEST_F(overlay, locks_the_array_while_it_stands)
{
    over.AttachToArray(&array.header);
    EXPECT_EQ(array.header.locks, 6u);
    EXPECT_EQ(over.Locks(), 6u);
    over.ReleaseArray();
    EXPECT_EQ(array.header.locks, 5u);
}

TEST_F(overlay, undoes_every_change_on_release)
{
    over.AttachToArray(&array.header);
    over.Dimensions(1);
    over.Features(0xFFFF);
    over.SizeofElements(99);
    over.Locks(99);
    over.PointerToData(foreign);
    over.CountOfElements(1, 99);
    over.LowerBound(1, 99);
    over.CountOfElements(2, 99);
    over.LowerBound(2, 99);
    over.ReleaseArray();
    expect_original();
}

TEST_F(overlay, attached_a_second_time_first_restores_the_old_array)
{
    array_descriptor<1> second;
    second.header.data = foreign;
    second.bounds[0] = {.count = 4, .lower = 0};
    over.AttachToArray(&array.header);
    over.PointerToData(foreign);
    over.CountOfElements(1, 4);
    over.AttachToArray(&second.header);
    expect_original();
    EXPECT_EQ(second.header.locks, 1u);
    EXPECT_EQ(over.PointerToData(), foreign);
    over.CountOfElements(1, 2);
    over.ReleaseArray();
    EXPECT_EQ(second.bounds[0].count, 4u);
    EXPECT_EQ(second.header.locks, 0u);
    expect_original();
}

TEST_F(overlay, attached_to_the_same_array_again_locks_it_once)
{
    over.AttachToArray(&array.header);
    over.CountOfElements(1, 99);
    over.AttachToArray(&array.header);
    EXPECT_EQ(array.header.locks, 6u);
    EXPECT_EQ(array.bounds[0].count, 2u);
    over.ReleaseArray();
    expect_original();
}

TEST_F(overlay, released_with_nothing_attached_changes_nothing)
{
    over.ReleaseArray();
    expect_original();
    over.AttachToArray(&array.header);
    over.ReleaseArray();
    array.header.locks = original.header.locks = 77;
    array.bounds[0].count = original.bounds[0].count = 88;
    over.ReleaseArray();
    expect_original();
}

TEST_F(overlay, attached_to_no_array_stays_empty)
{
    over.AttachToArray(&array.header);
    over.AttachToArray(nullptr);
    expect_original();
    over.PointerToData(foreign);
    over.CountOfElements(1, 99);
    over.Locks(99);
    expect_original();
}

TEST_F(overlay, takes_no_more_dimensions_than_the_array_had)
{
    over.AttachToArray(&array.header);
    over.Dimensions(3);
    EXPECT_EQ(array.header.dimensions, 2);
    over.Dimensions(1);
    EXPECT_EQ(array.header.dimensions, 1);
    over.Dimensions(2);
    EXPECT_EQ(array.header.dimensions, 2) << "the limit is the count at attach time";
    over.Dimensions(0);
    EXPECT_EQ(array.header.dimensions, 0);
}

TEST_F(overlay, reads_0_and_ignores_a_write_in_a_dimension_outside_the_array)
{
    over.AttachToArray(&array.header);
    for (const int dimension : {0, 3, -1, 1000000}) {
        EXPECT_EQ(over.CountOfElements(dimension), 0u);
        EXPECT_EQ(over.LowerBound(dimension), 0);
        over.CountOfElements(dimension, 99);
        over.LowerBound(dimension, 99);
    }
    over.ReleaseArray();
    expect_original();
}

TEST_F(overlay, counts_an_array_without_dimensions_as_one_of_one)
{
    array.header.dimensions = original.header.dimensions = 0;
    over.AttachToArray(&array.header);
    over.CountOfElements(1, 4);
    EXPECT_EQ(array.bounds[0].count, 4u);
    over.CountOfElements(2, 4);
    EXPECT_EQ(array.bounds[1].count, 1u) << "the second dimension is outside";
    over.ReleaseArray();
    expect_original();
}

TEST_F(overlay, is_released_when_it_goes)
{
    {
        clsSafeArray short_lived;
        short_lived.AttachToArray(&array.header);
        short_lived.PointerToData(foreign);
    }
    expect_original();
}

TEST(array_descriptor_layout, has_its_bounds_right_behind_the_header)
{
    array_descriptor<2> array;
    EXPECT_EQ(bounds_behind(&array.header), array.bounds);
    EXPECT_EQ(sizeof(array_bounds), 8u);
    EXPECT_EQ(offsetof(array_header, dimensions), 0u);
    EXPECT_EQ(offsetof(array_header, features), 2u);
    EXPECT_EQ(offsetof(array_header, element_bytes), 4u);
    EXPECT_EQ(offsetof(array_header, locks), 8u);
}

}  // namespace
}  // namespace tamrix
