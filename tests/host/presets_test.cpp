#include "host/device_preset.h"
#include "host/preset_text.h"
#include "support/name_space.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace tamrix::host {

namespace {

std::string error_of(std::string_view text)
{
    try {
        parse_presets(text, "devices.txt");
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(presets, a_stanza_gives_a_device)
{
    const auto devices = parse_presets("# all keys\n"
                                       "device 27C1024 (wide)\n"
                                       "    maker  Atmel Corp.  # with blanks\n"
                                       "    algorithm EPROM\r\n"
                                       "    words 0x10000\n"
                                       "\tword-bytes 2\n"
                                       "    spare-units 3\n"
                                       "    buffer-bytes 200000\n"
                                       "    pins 40\n    vcc-pin 39\n    gnd-pin 30\n"
                                       "    vcc 6.5\n    vpp 13.05\n"
                                       "    page 64\n    pulse-us 50\n    retries 10\n    mode 1\n    family 2\n"
                                       "    note 129\n    vcc-high 0x40\n"
                                       "    option-0 1\n    option-1 2\n    option-2 3\n    option-3 0xFF\n"
                                       "    clear none",
                                       "devices.txt");
    ASSERT_EQ(devices.size(), 1u);
    EXPECT_EQ(devices[0], (device_preset{.name = "27C1024 (wide)",
                                         .maker = "Atmel Corp.",
                                         .algorithm = "EPROM",
                                         .words = 0x10000,
                                         .word_bytes = 2,
                                         .spare_units = 3,
                                         .buffer_bytes = 200000,
                                         .pins = 40,
                                         .vcc_pin = 39,
                                         .gnd_pin = 30,
                                         .vcc_centivolts = 650,
                                         .vpp_centivolts = 1305,
                                         .page_length = 64,
                                         .pulse_us = 50,
                                         .retries = 10,
                                         .program_mode = 1,
                                         .family = 2,
                                         .clear = clear_choice::none,
                                         .note = 129,
                                         .vcc_high = 0x40,
                                         .option_0 = 1,
                                         .option_1 = 2,
                                         .option_2 = 3,
                                         .option_3 = 255}));
}

TEST(presets, what_a_stanza_leaves_out_has_its_default_and_the_buffer_fits)
{
    const auto devices = parse_presets("device A\nwords 100\nword-bytes 2\nspare-units 1\ndevice B\n", "devices.txt");
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[0].buffer_bytes, 216);
    EXPECT_EQ(devices[0].vcc_centivolts, 500);
    EXPECT_EQ(devices[0].clear, clear_choice::fill_ff);
    EXPECT_EQ(devices[1].words, 0);
    EXPECT_EQ(devices[1].buffer_bytes, 0);
}

TEST(presets, a_text_without_devices_is_an_empty_list)
{
    EXPECT_TRUE(parse_presets("", "devices.txt").empty());
    EXPECT_TRUE(parse_presets("\n# nothing\n\n", "devices.txt").empty());
}

TEST(presets, errors_name_file_line_found_and_expected)
{
    EXPECT_EQ(error_of("words 5\n"), "devices.txt:1: words 5 where \"device NAME\" was expected");
    EXPECT_EQ(error_of("\ndevice\n"), "devices.txt:2: device where \"device NAME\" was expected");
    EXPECT_EQ(error_of("device A\nspeed 5\n"), "devices.txt:2: speed where a key such as words or maker was expected");
    EXPECT_EQ(error_of("device A\nwords many\n"),
              "devices.txt:2: words many where a number from 0 to 2147483647 was expected");
    EXPECT_EQ(error_of("device A\nwords\n"), "devices.txt:2: words  where a number from 0 to 2147483647 was expected");
    EXPECT_EQ(error_of("device A\nwords -1\n"),
              "devices.txt:2: words -1 where a number from 0 to 2147483647 was expected");
    EXPECT_EQ(error_of("device A\nword-bytes 0\n"),
              "devices.txt:2: word-bytes 0 where a number from 1 to 255 was expected");
    EXPECT_EQ(error_of("device A\nvcc 5.125\n"),
              "devices.txt:2: vcc 5.125 where a number from 0.00 to 327.67 was expected");
    EXPECT_EQ(error_of("device A\nvpp 5V\n"), "devices.txt:2: vpp 5V where a number from 0.00 to 327.67 was expected");
    EXPECT_EQ(error_of("device A\nclear 55\n"), "devices.txt:2: clear 55 where ff, 00 or none was expected");
    EXPECT_EQ(error_of("device A\n\ndevice A\n"), "devices.txt:3: a second device A where another name was expected");
    EXPECT_EQ(error_of("device A\nwords 100\nbuffer-bytes 99\ndevice B\n"),
              "devices.txt:1: buffer-bytes 99 where at least 100 was expected");
    EXPECT_EQ(error_of("device A\nwords 0x40000000\nword-bytes 4\n"),
              "devices.txt:1: a device of 4294967296 bytes where less than 2 GiB was expected");
}

TEST(presets, what_is_printed_reads_back_the_same)
{
    const auto devices =
        parse_presets("device A\nwords 7\nvcc 3.05\nclear 00\ndevice B (x)\nmaker M\nretries 0\n", "x");
    EXPECT_EQ(parse_presets(print_presets(devices), "y"), devices);
    EXPECT_EQ(print_presets(devices), "device A\n    words 7\n    buffer-bytes 7\n    vcc 3.05\n    clear 00\n"
                                      "\ndevice B (x)\n    maker M\n    retries 0\n");
}

TEST(presets, a_list_replaces_devices_of_the_same_name_and_adds_the_others)
{
    const auto base = parse_presets("device A\nwords 1\ndevice B\nwords 2\n", "x");
    const auto own = parse_presets("device C\nwords 3\ndevice A\nwords 9\n", "y");
    const auto merged = merge_presets(base, own);
    ASSERT_EQ(merged.size(), 3u);
    EXPECT_EQ(merged[0].words, 9);
    EXPECT_EQ(merged[1].name, "B");
    EXPECT_EQ(merged[2].name, "C");
    EXPECT_EQ(find_preset(merged, "B"), &merged[1]);
    EXPECT_EQ(find_preset(merged, "D"), nullptr);
}

TEST(presets, a_file_is_written_and_read_back)
{
    const tests::temp_folder folder;
    const auto devices = parse_presets("device A\nwords 7\n", "x");
    write_presets(folder.path("own.txt"), devices);
    EXPECT_EQ(read_presets(folder.path("own.txt")), devices);
    folder.write("own.txt.saving-aB3xY9", "dev");  // of a program that was killed
    write_presets(folder.path("own.txt"), {});
    EXPECT_TRUE(read_presets(folder.path("own.txt")).empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{folder.path("")}, {}), 1);
}

TEST(presets, a_file_that_a_link_leads_to_is_replaced_where_it_is)
{
    const tests::temp_folder folder;
    const std::string file = folder.write("kept.txt", "device B\n");
    std::filesystem::create_symlink("kept.txt", folder.path("own.txt"));
    write_presets(folder.path("own.txt"), parse_presets("device A\n", "x"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("own.txt")));
    EXPECT_EQ(tests::read_text(file), "device A\n");
}

TEST(presets, a_file_that_cannot_be_read_or_written_is_told)
{
    const tests::temp_folder folder;
    const auto text_of = [](const std::function<void()>& action) -> std::string {
        try {
            action();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    };
    EXPECT_EQ(text_of([&] { read_presets(folder.path("none")); }), folder.path("none") + ": no such file");
    EXPECT_EQ(text_of([&] { read_presets(folder.path("")); }),
              folder.path("") + ": a directory where a file was expected");
    EXPECT_EQ(text_of([&] { write_presets(folder.path("none/x"), {}); }), folder.path("none/x") + ": no such file");
}

TEST(presets, a_device_goes_into_its_blocks)
{
    host_blocks blocks{tests::fresh_name_space(), 0, {tamrix_text_new, tamrix_text_get, tamrix_text_free}};
    blocks.value<std::int32_t>("pwte", 1) = 1;
    apply({.name = "93C46",
           .maker = "Microchip",
           .algorithm = "MWIRE",
           .words = 64,
           .word_bytes = 2,
           .spare_units = 1,
           .buffer_bytes = 144,
           .pins = 8,
           .vcc_pin = 7,
           .gnd_pin = 5,
           .vcc_centivolts = 330,
           .vpp_centivolts = 1200,
           .page_length = 4,
           .pulse_us = 2000,
           .retries = 3,
           .program_mode = 6,
           .family = 2,
           .clear = clear_choice::fill_00,
           .note = 2,
           .vcc_high = 64,
           .option_0 = 10,
           .option_1 = 11,
           .option_2 = 12,
           .option_3 = 13},
          blocks);
    EXPECT_EQ(blocks.text("wtype"), "93C46");
    EXPECT_EQ(blocks.text("wcompany"), "Microchip");
    EXPECT_EQ(blocks.text("algo"), "MWIRE");
    EXPECT_EQ(blocks.value<std::int32_t>("tlength"), 64);
    EXPECT_EQ(blocks.value<std::uint8_t>("wordmode", 0), 2);
    EXPECT_EQ(blocks.value<std::uint8_t>("wordmode", 1), 1);
    EXPECT_EQ(blocks.value<std::int16_t>("chippin"), 8);
    EXPECT_EQ(blocks.value<std::uint8_t>("bvccpin"), 103);
    EXPECT_EQ(blocks.value<std::uint8_t>("bgndpin"), 101);
    EXPECT_EQ(blocks.value<std::int16_t>("bvcc"), 330);
    EXPECT_EQ(blocks.value<std::int16_t>("bvpp"), 1200);
    EXPECT_EQ(blocks.value<std::int16_t>("pagelength"), 4);
    EXPECT_EQ(blocks.value<std::int32_t>("pwte", 0), 2000);
    EXPECT_EQ(blocks.value<std::int32_t>("pwte", 1), 0);
    EXPECT_EQ(blocks.value<std::int16_t>("wretry"), 3);
    EXPECT_EQ(blocks.value<std::uint8_t>("prgmode"), 6);
    EXPECT_EQ(blocks.value<std::uint8_t>("typeformat", 0), 2);
    EXPECT_EQ(blocks.value<std::uint8_t>("typeformat", 1), 1);
    EXPECT_EQ(blocks.value<std::uint8_t>("wwarnno"), 2);
    EXPECT_EQ(blocks.value<std::int16_t>("bvcch"), 64);
    for (std::uint8_t i = 0; i < 4; ++i) EXPECT_EQ(blocks.value<std::uint8_t>("woption", i), 10 + i);
}

TEST(presets, supply_pins_go_by_the_code_of_the_programmer)
{
    EXPECT_EQ(pin_code(20, 20), 110);
    EXPECT_EQ(pin_code(10, 20), 1);
    EXPECT_EQ(pin_code(1, 20), 10);
    EXPECT_EQ(pin_code(11, 20), 101);
    EXPECT_EQ(pin_code(48, 48), 124);
    EXPECT_EQ(pin_code(0, 20), 0) << "no pin";
    EXPECT_EQ(pin_code(21, 20), 0);
    EXPECT_EQ(pin_code(5, 0), 0);
}

TEST(presets, the_list_of_the_program_is_sound)
{
    const auto devices = read_presets(TAMRIX_DATA_OF_SOURCE "/devices.txt");
    EXPECT_GE(devices.size(), 20u);
    for (const device_preset& device : devices) {
        EXPECT_GT(device.words, 0) << device.name;
        EXPECT_GE(device.buffer_bytes, image_bytes(device)) << device.name;
        EXPECT_LE(device.vcc_pin, device.pins) << device.name;
        EXPECT_LE(device.gnd_pin, device.pins) << device.name;
        EXPECT_FALSE(device.maker.empty()) << device.name;
        EXPECT_GE(device.vcc_centivolts, 160) << device.name;
        EXPECT_LE(device.vpp_centivolts, 2600) << device.name;
    }
}

TEST(presets, the_list_holds_a_device_of_every_kind)
{
    const auto devices = read_presets(TAMRIX_DATA_OF_SOURCE "/devices.txt");
    const auto has = [&](auto wanted) { return std::any_of(devices.begin(), devices.end(), wanted); };
    EXPECT_TRUE(has([](const device_preset& d) { return d.word_bytes == 2; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.maker == "HOLTEK" && d.family == 2; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.maker == "EMC" && d.family == 2; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.words >= 0x10800000; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.name.starts_with("GAL"); }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.page_length > 1 && d.vpp_centivolts <= 500; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.page_length <= 1 && d.vpp_centivolts < 130; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.vpp_centivolts > 500; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.algorithm == "WSEPM" && d.program_mode == 1; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.pulse_us >= 1000; }));
    EXPECT_TRUE(has([](const device_preset& d) { return d.note > 128; })) << "asks for the external supply";
    for (const int note : {1, 2, 4, 6, 8, 13, 17, 18, 21, 24, 25}) {
        EXPECT_TRUE(has([&](const device_preset& d) { return (d.note & 0x7F) == note; })) << "note " << note;
    }
}

}  // namespace tamrix::host
