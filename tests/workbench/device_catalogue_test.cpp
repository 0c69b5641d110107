#include "support/own_settings.h"
#include "workbench/device_catalogue.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

using namespace tamrix;
using workbench::device_catalogue;

namespace {

class catalogues : public testing::Test {
protected:
    const tests::own_settings settings;
    const std::filesystem::path own_file = settings.folder / "config" / "tamrix" / "devices.txt";
};

}  // namespace

TEST_F(catalogues, begins_with_the_devices_of_the_program)
{
    const device_catalogue devices;
    EXPECT_NE(host::find_preset(devices.devices(), "27C256"), nullptr);
    EXPECT_FALSE(devices.is_own("27C256"));
    EXPECT_FALSE(std::filesystem::exists(own_file));
}

TEST_F(catalogues, a_saved_device_is_there_again_at_the_next_start)
{
    device_catalogue{}.save({.name = "X1", .words = 100, .buffer_bytes = 100});
    const device_catalogue devices;
    ASSERT_NE(host::find_preset(devices.devices(), "X1"), nullptr);
    EXPECT_EQ(host::find_preset(devices.devices(), "X1")->words, 100);
    EXPECT_TRUE(devices.is_own("X1"));
}

TEST_F(catalogues, values_that_were_changed_cover_those_of_the_program_until_they_are_removed)
{
    device_catalogue devices;
    const host::device_preset before = *host::find_preset(devices.devices(), "27C256");
    host::device_preset changed = before;
    changed.retries = 3;
    devices.save(changed);
    EXPECT_EQ(host::find_preset(devices.devices(), "27C256")->retries, 3);
    devices.remove("27C256");
    EXPECT_EQ(*host::find_preset(devices.devices(), "27C256"), before);
    EXPECT_FALSE(devices.is_own("27C256"));
}

TEST_F(catalogues, a_file_that_cannot_be_written_leaves_the_list_as_it_was)
{
    device_catalogue devices;
    std::filesystem::create_directories(own_file);  // a folder in the file's place
    EXPECT_THROW(devices.save({.name = "X1"}), std::runtime_error);
    EXPECT_EQ(host::find_preset(devices.devices(), "X1"), nullptr);
}

TEST_F(catalogues, a_wrong_line_is_told_by_file_and_number)
{
    std::filesystem::create_directories(own_file.parent_path());
    std::ofstream{own_file} << "device X1\n    word-bytes 300\n";
    try {
        const device_catalogue devices;
        ADD_FAILURE();
    } catch (const std::runtime_error& error) {
        EXPECT_TRUE(std::string{error.what()}.starts_with(own_file.string() + ":2: word-bytes 300")) << error.what();
    }
}
