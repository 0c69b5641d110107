#include "tamrix/blocks.h"

#include "blocks/expected_blocks.h"
#include "blocks/sharemap.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace tamrix {
namespace {

using tests::expected_block;
using tests::expected_small_blocks;

std::string_view described(element kind)
{
    switch (kind) {
    case element::byte: return "unsigned byte";
    case element::int16: return "16-bit signed integer";
    case element::int32: return "32-bit signed integer";
    case element::boolean: return "16-bit boolean";
    case element::real: return "double";
    case element::text: return "text";
    }
    return "";
}

TEST(blocks, stand_in_the_table_with_their_names_sizes_types_and_counts_in_attach_order)
{
    ASSERT_EQ(small_blocks.size(), 60u);
    ASSERT_EQ(std::size(expected_small_blocks), 60u);
    for (std::size_t i = 0; i < 60; ++i) {
        const expected_block& expected = expected_small_blocks[i];
        SCOPED_TRACE(std::string{expected.name});
        EXPECT_EQ(small_blocks[i].name, expected.name);
        EXPECT_EQ(small_blocks[i].mapped_bytes, expected.mapped_bytes);
        EXPECT_EQ(described(small_blocks[i].kind), expected.element);
        EXPECT_EQ(small_blocks[i].count, expected.count);
        EXPECT_EQ(element_bytes(small_blocks[i].kind), tests::bytes_of_element(expected.element));
    }
    EXPECT_EQ(big_blocks[0].name, "ibuffer");
    EXPECT_EQ(big_blocks[1].name, "ibuffer66");
    EXPECT_EQ(big_blocks[1].mapped_bytes, 40u);
    EXPECT_EQ(big_blocks[1].count, 15u);
    EXPECT_EQ(described(big_blocks[0].kind), "unsigned byte");
    EXPECT_EQ(described(big_blocks[1].kind), "unsigned byte");
}

TEST(blocks, have_62_different_names)
{
    std::set<std::string_view> names;
    for (const auto& line : small_blocks) names.insert(line.name);
    for (const auto& line : big_blocks) names.insert(line.name);
    EXPECT_EQ(names.size(), 62u);
}

TEST(blocks, that_ask_for_less_than_their_views_span_are_two)
{
    std::vector<std::string_view> smaller;
    for (const auto& line : small_blocks) {
        if (line.mapped_bytes < element_bytes(line.kind) * line.count) smaller.push_back(line.name);
    }
    EXPECT_EQ(smaller, (std::vector<std::string_view>{"ppin", "ICnum"}));
}

TEST(object_names, of_small_blocks_end_with_the_instance_number)
{
    EXPECT_EQ(small_block_object("ibuf1", 0), "qorfanibuf10");
    EXPECT_EQ(small_block_object("ibuf1", 1), "qorfanibuf11");
    EXPECT_EQ(small_block_object("ibuf1", 12), "qorfanibuf112");
    EXPECT_EQ(small_block_object("MainRtstr", 100), "qorfanMainRtstr100");
}

TEST(object_names, of_big_blocks_have_no_number)
{
    EXPECT_EQ(big_block_object("ibuffer"), "qorfanibuffer");
    EXPECT_EQ(big_block_object("ibuffer66"), "qorfanibuffer66");
}

TEST(buffer_size, is_the_length_and_a_margin_below_the_threshold)
{
    EXPECT_EQ(ibuffer_bytes(0), 2200);
    EXPECT_EQ(ibuffer_bytes(0x10000), 0x10898);
    EXPECT_EQ(ibuffer_bytes(0x83FFFFF), 0x8400897);
    EXPECT_EQ(ibuffer_bytes(0x8400000), 0x8400898);
    EXPECT_EQ(ibuffer_bytes(0x107FFFFF), 0x10800897);
}

TEST(buffer_size, is_fixed_and_smaller_from_the_threshold_on)
{
    EXPECT_EQ(ibuffer_bytes(0x10800000), 0x8400898);
    EXPECT_EQ(ibuffer_bytes(0x10800001), 138414232);
    EXPECT_EQ(ibuffer_bytes(0x7FFFFFFF), 0x8400898);
}

/// The element's type as a view hands it out.
template <class View>
std::string_view handed_out(View& view)
{
    if constexpr (std::is_same_v<View, text_block>) {
        return "text";
    } else {
        using value = std::remove_reference_t<decltype(view(0))>;
        if constexpr (std::is_same_v<value, std::uint8_t>) return "unsigned byte";
        if constexpr (std::is_same_v<value, std::int16_t>) return "16-bit signed integer";
        if constexpr (std::is_same_v<value, std::int32_t>) return "32-bit signed integer";
        if constexpr (std::is_same_v<value, double>) return "double";
        return "";
    }
}

TEST(views, have_the_names_and_element_types_of_their_blocks)
{
    sharemap map{"unused", [] {}};
    std::size_t next = 0;
    const auto check = [&](auto& view, std::string_view name) {
        SCOPED_TRACE(std::string{name});
        ASSERT_LT(next, std::size(expected_small_blocks));
        const expected_block& expected = expected_small_blocks[next];
        EXPECT_EQ(expected.name, name);
        EXPECT_EQ(view.name(), name);
        EXPECT_EQ(map.small()[next], &view) << "attach order";
        // A boolean is 16 bits wide here.
        const bool boolean = expected.element == "16-bit boolean";
        EXPECT_EQ(handed_out(view), boolean ? "16-bit signed integer" : expected.element);
        ++next;
    };
#define CHECK(view) check(map.view, #view)
    CHECK(ibuf1);
    CHECK(ubuf1);
    CHECK(ubuf2);
    CHECK(ibuf2);
    CHECK(usbpip0readresult);
    CHECK(usbpip2readresult);
    CHECK(arrybuf);
    CHECK(prgnote);
    CHECK(prgresult);
    CHECK(wltbigendbuf);
    CHECK(bvccpin);
    CHECK(bgndpin);
    CHECK(bvpppin);
    CHECK(bvcc);
    CHECK(bvcch);
    CHECK(bvpp);
    CHECK(buflength);
    CHECK(Language);
    CHECK(pagelength);
    CHECK(modeltype);
    CHECK(wfig);
    CHECK(chipidtestmode);
    CHECK(pwte);
    CHECK(figmode);
    CHECK(chippin);
    CHECK(wretry);
    CHECK(prgmode);
    CHECK(wordmode);
    CHECK(woption);
    CHECK(wautonum);
    CHECK(tlength);
    CHECK(compid);
    check(map.typeid_, "typeid");  // "typeid" itself is a keyword
    CHECK(wsign);
    CHECK(buftype);
    CHECK(autoprg);
    CHECK(rambknum);
    CHECK(MainmnuPrg);
    CHECK(MainRtstr);
    CHECK(ubuflg);
    CHECK(ramlg);
    CHECK(wlverifyvcc);
    CHECK(algo);
    CHECK(figvol);
    CHECK(wwarnno);
    CHECK(spdter);
    CHECK(menu);
    CHECK(order);
    CHECK(pintestmap);
    CHECK(wordmode0);
    CHECK(ppin);
    CHECK(serial);
    CHECK(typeformat);
    CHECK(ICnum);
    CHECK(wcompany);
    CHECK(wtype);
    CHECK(usbable);
    CHECK(algorithm);
    CHECK(selmode);
    CHECK(algobuf);
#undef CHECK
    EXPECT_EQ(next, 60u);
    EXPECT_EQ(map.ibuffer.name(), "ibuffer");
    EXPECT_EQ(handed_out(map.ibuffer), "unsigned byte");
    EXPECT_EQ(map.ibuffer66.name(), "ibuffer66");
    EXPECT_EQ(handed_out(map.ibuffer66), "unsigned byte");
}

}  // namespace
}  // namespace tamrix
