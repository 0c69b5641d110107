#include "cli/convert_options.h"
#include "cli/run_command.h"
#include "formats/formats.h"
#include "host/languages.h"
#include "messages/catalogue.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <iterator>

namespace tamrix::tests {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(usage, the_version_is_one_line)
{
    for (const char* option : {"--version", "-v"}) {
        const auto result = tamrix_command({option});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, "tamrix " TAMRIX_VERSION "\n");
        EXPECT_EQ(result.err, "");
    }
}

TEST(usage, every_command_has_help_on_standard_output)
{
    const std::string statuses =
        "Exit status: 0 done, 1 failed, 2 rejected values or wrong usage, 3 a test could not be carried out.";
    const std::string statuses_of_selftest =
        "Exit status: 0 passed, 1 failed, 2 rejected values or wrong usage, 3 the test could not be carried out.";
    for (const std::string command :
         {"analyze", "convert", "detect", "jedec", "selftest", "svf", "ttl", "vectors", "wave", "tour"}) {
        const auto result = tamrix_command({command, "--help"});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, HasSubstr("Usage: tamrix " + command));
        EXPECT_THAT(result.out, HasSubstr(command == "selftest" ? statuses_of_selftest : statuses));
        EXPECT_EQ(result.err, "") << command;
        EXPECT_THAT(tamrix_command({"--help"}).out, HasSubstr("\n  " + command + " ")) << command;
    }
}

TEST(usage, the_help_of_convert_lists_every_option)
{
    const std::string help = tamrix_command({"convert", "--help"}).out;
    for (const char* option : {"--from ", "--to ", "--device-words N", "--word-bytes N", "--spare-units N",
                               "--buffer-bytes N", "--from-mode normal|even|odd|1of4|2of4|3of4|4of4",
                               "--to-mode normal|even|odd|1of4|2of4|3of4|4of4", "--to-buffer HEX", "--from-file HEX",
                               "--file-size HEX", "--clear none|00|ff", "--save-from HEX", "--save-size HEX"}) {
        EXPECT_THAT(help, HasSubstr(option));
    }
}

TEST(usage, the_help_offers_the_formats_that_can_be_loaded_and_saved)
{
    std::string loads, saves;
    for (const format& one : formats()) {
        if (one.read != nullptr) loads += (loads.empty() ? "" : "|") + std::string{one.name};
        if (one.write != nullptr) saves += (saves.empty() ? "" : "|") + std::string{one.name};
    }
    const std::string help = tamrix_command({"convert", "--help"}).out;
    EXPECT_THAT(help, HasSubstr("--from " + loads));
    EXPECT_THAT(help, HasSubstr("--to " + saves));
}

struct refused {
    std::vector<std::string> arguments;
    std::string text;
};

class wrong_usage : public testing::TestWithParam<refused> {};

TEST_P(wrong_usage, is_told_with_status_2)
{
    const temp_folder folder;
    folder.write("in.bin", "0123456789");
    const auto result = tamrix_command(GetParam().arguments, {.folder = folder.path("")});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "tamrix: " + GetParam().text + "\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.bin")));
}

std::string loadable()
{
    std::string names;
    for (const format& one : formats()) {
        if (one.read != nullptr) names += (names.empty() ? "" : ", ") + std::string{one.name};
    }
    return names;
}

const std::string language_list = "en, zh-cn, zh-tw, ko, pl, it, nl, pt-br, tr, hu, ru";

std::vector<std::string> with(std::vector<std::string> options)
{
    std::vector<std::string> arguments{"convert", "in.bin", "out.bin"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

std::string name_of(const testing::TestParamInfo<refused>& info)
{
    std::string name = std::to_string(info.index);
    for (const std::string& argument : info.param.arguments) {
        name += '_';
        std::ranges::copy_if(argument, std::back_inserter(name), [](unsigned char c) { return std::isalnum(c) != 0; });
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(
    of_the_command, wrong_usage,
    testing::Values(
        refused{{"burn"}, "burn: no such command (see tamrix --help)"},
        refused{{"convert", "in.bin"}, "OUT is required"}, refused{{"detect"}, "FILE is required"},
        refused{with({"--fast"}), "--fast: no such option (see tamrix convert --help)"},
        refused{with({"--to-buffer"}), "--to-buffer: 1 required HEX missing"},
        refused{with({"--from", "elf"}), "--from elf: one of " + loadable() + " is expected"},
        refused{with({"--to", "holtek"}),
                "--to holtek: files of this format cannot be saved; these can: binary, intel, motorola, tektronix"},
        refused{with({"--from-mode", "third"}),
                "--from-mode third: one of normal, even, odd, 1of4, 2of4, 3of4, 4of4 is expected"},
        refused{with({"--to-mode", "5of4"}),
                "--to-mode 5of4: one of normal, even, odd, 1of4, 2of4, 3of4, 4of4 is expected"},
        refused{with({"--clear", "0"}), "--clear 0: one of ff, 00, none is expected"},
        refused{with({"--to-buffer", "12G"}), "--to-buffer 12G: not a hexadecimal number"},
        refused{with({"--from-file", ""}), "--from-file : not a hexadecimal number"},
        refused{with({"--file-size", "0x"}), "--file-size 0x: not a hexadecimal number"},
        refused{with({"--save-from", "1 2"}), "--save-from 1 2: not a hexadecimal number"},
        refused{with({"--save-size", "$10"}), "--save-size $10: not a hexadecimal number"},
        refused{with({"--device-words", "many"}), "--device-words many: a number from 0 to 2147483647 is expected"},
        refused{with({"--device-words", "2147483648"}),
                "--device-words 2147483648: a number from 0 to 2147483647 is expected"},
        refused{with({"--word-bytes", "0"}), "--word-bytes 0: a number from 1 to 255 is expected"},
        refused{with({"--spare-units", "256"}), "--spare-units 256: a number from 0 to 255 is expected"},
        refused{with({"--buffer-bytes", "0x80000000"}),
                "--buffer-bytes 0x80000000: a number from 0 to 2147481447 is expected"},
        refused{with({"--device-words", "0x40000000", "--word-bytes", "2"}),
                "--device-words 1073741824: a device of 2147483648 bytes, less than 2 GiB is expected"},
        refused{with({"--language", "7"}), "--language 7: one of " + language_list + " is expected"},
        refused{with({"--language", ""}), "--language : one of " + language_list + " is expected"},
        refused{with({"--language", "36000"}), "--language 36000: one of " + language_list + " is expected"},
        refused{with({"--language", "3000x"}), "--language 3000x: one of " + language_list + " is expected"},
        refused{with({"--language", "EN"}), "--language EN: one of " + language_list + " is expected"},
        refused{with({"--language", "english"}), "--language english: one of " + language_list + " is expected"}),
    name_of);

TEST(usage, a_language_is_taken_before_and_behind_the_command)
{
    const temp_folder folder;
    folder.write("in.bin", "0123456789");
    const command_setting there{.folder = folder.path("")};
    EXPECT_EQ(tamrix_command({"--language", "15000", "convert", "in.bin", "out.bin"}, there).status, 0);
    EXPECT_EQ(tamrix_command({"--language", "en", "convert", "in.bin", "out.bin"}, there).status, 0);
    EXPECT_EQ(tamrix_command({"convert", "in.bin", "out.bin", "--language", "15000"}, there).status, 0);
    EXPECT_EQ(tamrix_command({"detect", "in.bin", "--language", "3"}, there).status, 2);
}

TEST(usage, the_help_tells_the_languages)
{
    EXPECT_THAT(tamrix_command({"--help"}).out, HasSubstr("--language CODE"));
    EXPECT_THAT(tamrix_command({"--help"}).out, HasSubstr("en, zh-cn, zh-tw, ko, pl, it, nl, pt-br, tr, hu, ru"));
    EXPECT_THAT(tamrix_command({"ttl", "test", "--help"}).out, HasSubstr("--language CODE"));
}

TEST(usage, the_messages_of_a_command_are_those_of_the_language)
{
    const temp_folder folder;
    folder.write("in.bin", "0123456789");
    for (const host::language& one : host::languages()) {
        for (const std::string& word : {std::string{one.code}, std::to_string(one.offset)}) {
            const auto result =
                tamrix_command({"convert", "in.bin", "out.bin", "--device-words", "10", "--language", word},
                               {.folder = folder.path("")});
            if (has_language(one.offset)) {
                EXPECT_EQ(result.status, 0) << word;
                EXPECT_THAT(result.out, StartsWith(LoadResString(one.offset + 1134))) << word;
                EXPECT_THAT(result.out, HasSubstr(LoadResString(one.offset + 1141))) << word;
            } else {
                EXPECT_EQ(result.status, 2) << word;
                EXPECT_EQ(result.err, "tamrix: --language " + word + ": this version has no texts in " +
                                          std::string{one.english} + "\n");
            }
        }
    }
}

TEST(usage, a_standard_output_that_takes_nothing_is_a_failure)
{
    const auto result = tamrix_command({"--version"}, {.standard_output = "/dev/full"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: standard output: cannot be written\n");
}

}  // namespace tamrix::tests
