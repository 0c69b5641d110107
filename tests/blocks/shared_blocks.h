// The fixture of the tests on shared blocks.
#pragma once

#include "blocks/sharemap.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"
#include "support/shared_objects.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tamrix::tests {

using names = std::vector<std::string>;

inline constexpr const char* failure_text = "Unable to create memory mapped file";

/// Asks any view for an element.
inline void ask(block_base& view, std::int64_t index)
{
    if (auto* bytes = dynamic_cast<block<std::uint8_t>*>(&view)) {
        (*bytes)(index) = 0xEE;
    } else if (auto* words = dynamic_cast<block<std::int16_t>*>(&view)) {
        (*words)(index) = 0xEE;
    } else if (auto* longs = dynamic_cast<block<std::int32_t>*>(&view)) {
        (*longs)(index) = 0xEE;
    } else if (auto* reals = dynamic_cast<block<double>*>(&view)) {
        (*reals)(index) = 0xEE;
    } else {
        dynamic_cast<text_block&>(view)(index).str();
    }
}

struct shared_blocks : testing::Test {
    const std::string prefix = fresh_name_space();
    scripted_shell shell;

    std::string object(const std::string& name) const { return prefix + "qorfan" + name; }
    static std::size_t size_of(const std::string& name) { return std::filesystem::file_size("/dev/shm/" + name); }
    static std::vector<block_base*> all(sharemap& map)
    {
        const auto small = map.small();
        std::vector<block_base*> views{small.begin(), small.end()};
        views.insert(views.end(), {&map.ibuffer, &map.ibuffer66});
        return views;
    }
    void TearDown() override { EXPECT_EQ(shared_objects(prefix), names{}); }
};

}  // namespace tamrix::tests
