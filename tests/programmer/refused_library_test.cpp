// Libraries that give no programmer: what is said about each.
#include "programmer/loaded_programmer.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#if defined(_WIN32)
#include "base/system_message_win32.h"

#include <windows.h>
#endif

namespace tamrix::tests {
namespace {

/// Why a library does not give a programmer, without its path.
std::string refusal(const std::string& path, const std::string& options = {})
{
    std::array<std::uint8_t, 20> ibuf1{};
    try {
        hw::library_source(path, options)({ibuf1.data(), 20});
    } catch (const hw::programmer_error& error) {
        const std::string text = error.what(), start = "programmer library " + path + ": ";
        EXPECT_TRUE(text.starts_with(start)) << text;
        return text.substr(std::min(start.size(), text.size()));
    }
    return "loaded";
}

std::string bad(const char* defect) { return std::string{TAMRIX_BAD_LIBRARIES} + defect + TAMRIX_LIBRARY_SUFFIX; }

/// The system's own words.
std::string no_such_library([[maybe_unused]] const std::string& path)
{
#if defined(_WIN32)
    return system_message(ERROR_MOD_NOT_FOUND);
#else
    return path + ": cannot open shared object file: No such file or directory";
#endif
}

/// What the system finds wrong with a text.
std::string no_library()
{
#if defined(_WIN32)
    return system_message(ERROR_BAD_EXE_FORMAT);
#else
    return "file too short";
#endif
}

TEST(loaded_programmer, a_file_that_gives_none_is_told_with_the_reason)
{
    EXPECT_EQ(refusal("/nowhere/programmer.so"), no_such_library("/nowhere/programmer.so"));
    EXPECT_EQ(refusal(bad("NO_SYMBOL")), "is no programmer library: it has no tamrix_hardware_functions");
    EXPECT_EQ(refusal(bad("NO_TABLE")), "yields no functions");
    EXPECT_EQ(refusal(bad("OLD")),
              "has version 1 of the interface in tamrix/hardware.h where 2 is needed; the library is too old");
    EXPECT_EQ(refusal(bad("NEW")),
              "has version 3 of the interface in tamrix/hardware.h where 2 is needed; this program is too old");
    EXPECT_EQ(refusal(bad("SHORT")), "has too short a table of functions");
    EXPECT_EQ(refusal(bad("LACKING")), "has no function vecstart");
    EXPECT_EQ(refusal(bad("NOBODY")), "the cable is off");
}

TEST(loaded_programmer, no_name_and_a_text_file_are_no_libraries)
{
    std::array<std::uint8_t, 20> ibuf1{};
    EXPECT_THROW(hw::library_source("")({ibuf1.data(), 20}), hw::programmer_error);
    const temp_folder folder;
    EXPECT_NE(refusal(folder.write("text.so", std::string_view{"not a library"})).find(no_library()),
              std::string::npos);
}

TEST(loaded_programmer, options_that_the_library_does_not_know_are_told)
{
    EXPECT_EQ(
        refusal(TAMRIX_SIM_LIBRARY, "colour red"),
        "option \"colour red\": model, generation, ram banks, fault, no faults, signal, no signals, socket, chips, "
        "speed, transcript or instance was expected");
    EXPECT_EQ(refusal(TAMRIX_SIM_LIBRARY, "model 300"), "option \"model 300\": a number from 0 to 255 was expected");
    EXPECT_EQ(refusal(TAMRIX_SIM_LIBRARY, "fault pin 3"),
              "fault \"pin 3\": its end where \"open\" or \"stuck\" was expected");
    EXPECT_EQ(refusal(TAMRIX_SIM_LIBRARY, "socket moon"),
              "socket \"moon\": empty or test board was expected, or an entry \"chips FOLDER\"");
    EXPECT_EQ(refusal(TAMRIX_SIM_LIBRARY, "transcript /nowhere/at/all"), "cannot write /nowhere/at/all");
    EXPECT_EQ(refusal(TAMRIX_SIM_LIBRARY, " model 23 ;\n; socket test board;speed 1000\n"), "loaded");
}

}  // namespace
}  // namespace tamrix::tests
