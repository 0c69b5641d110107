// Transport libraries as compilers make them, and what is no transport library.
#include "programmer/lumbat_dll_win32.h"

#include "base/system_message_win32.h"
#include "programmer/programmer.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tamrix::tests {
namespace {

/// Why a file is no transport library.
std::string refusal(const std::string& path)
{
    try {
        const hw::lumbat_dll loaded{path};
    } catch (const hw::programmer_error& error) {
        return error.what();
    }
    return "loaded";
}

TEST(lumbat_dll, that_is_not_there_is_told_with_the_systems_reason)
{
    EXPECT_EQ(refusal("nowhere.dll"), "programmer library nowhere.dll: " + system_message(ERROR_MOD_NOT_FOUND));
    EXPECT_TRUE(system_message(ERROR_MOD_NOT_FOUND).ends_with(" (126)"));
    EXPECT_EQ(refusal("chips/arithmetic.chip"),
              "programmer library chips/arithmetic.chip: " + system_message(ERROR_BAD_EXE_FORMAT));
}

TEST(lumbat_dll, without_one_of_the_three_functions_is_refused)
{
    EXPECT_EQ(refusal("bad_lumbat_LACKING.dll"),
              "programmer library bad_lumbat_LACKING.dll: has no function usbbulkread");
    EXPECT_EQ(refusal("bad_lumbat_EMPTY.dll"), "programmer library bad_lumbat_EMPTY.dll: has no function usbcomwrite");
    EXPECT_EQ(refusal("kernel32.dll"), "programmer library kernel32.dll: has no function usbcomwrite");
}

TEST(lumbat_dll, may_carry_the_names_that_a_compiler_makes)
{
    for (const char* path : {"bad_lumbat_DECORATED.dll", "bad_lumbat_UNDERSCORED.dll"}) {
        hw::lumbat_dll loaded{path};
        std::uint8_t byte = 5;
        for (int i = 0; i < 1000; ++i) {  // a wrong way of calling would not leave the stack as it was
            EXPECT_EQ(loaded.usbcomwrite(&byte, 13), 15);
            EXPECT_EQ(loaded.usbbulkwrite(&byte, 32768), 32771);
            EXPECT_EQ(loaded.usbbulkread(&byte, 32769, &byte), 32773);
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
