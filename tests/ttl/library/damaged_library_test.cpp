// POSIX only: it uses /dev/shm. Damaged libraries, given to everything that reads or changes a library.
#include "ttl/library/library.h"
#include "ttl/library/life_fixture.h"
#include "ttl/run/ttlscan.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace tamrix::tests {
namespace {

/// Everything that reads or changes a library; what is damaged may fail, and a failed change leaves the file.
void use_everywhere(life_fixture& f, const std::string& text)
{
    f.put_library(text);
    const library_directory directory = read_directory(f.session);
    ASSERT_LE(directory.names.size(), 3000u);
    for (const char* name : {"7400", "1234567890AB", "TEN", ""}) ttlload(f.session, f.variables.ttl, name, -1, -1);
    const auto unchanged_or_done = [&](auto change) {
        f.put_library(text);
        try {
            change();
        } catch (const std::runtime_error&) {
            ASSERT_EQ(read_text(f.file), text);
        }
    };
    unchanged_or_done([&] { ttldelete(f.session, "7400", 1); });
    unchanged_or_done([&] {
        lines list;
        f.insert({"7499", nand_rows}, list);
    });
    f.put_library(text);
    try {
        ttlscan(f.session, f.variables.ttl, [](const lines&) {});
    } catch (const std::out_of_range&) {  // a pin count that no socket has
    }
}

const std::vector<slow::device_record> small_library{
    {"TEN", {"0000G0000V", "1111G1111V"}}, nand, {"1234567890AB", {"000G000V"}}};

TEST(damaged_library, cut_at_every_byte_has_a_defined_outcome)
{
    life_fixture f;
    const std::string whole = slow::library_text(small_library);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        use_everywhere(f, whole.substr(0, length));
    }
}

TEST(damaged_library, with_every_byte_changed_has_a_defined_outcome)
{
    life_fixture f;
    const std::string whole = slow::library_text(small_library);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char value : {'\0', '\r', '\n', '$', '9', '\x7F', '\xFF'}) {
            SCOPED_TRACE(std::to_string(at) + " becomes " + std::to_string(value));
            std::string text = whole;
            text[at] = value;
            use_everywhere(f, text);
        }
    }
}

TEST(damaged_library, with_a_wrong_count_has_a_defined_outcome)
{
    life_fixture f;
    for (const char* count : {"0000", "0001", "0002", "0004", "00FF", "7FFF", "8000", "FFFF", "-001", "    ", "xyz!"}) {
        SCOPED_TRACE(count);
        use_everywhere(f, slow::library_text(small_library).replace(11, 4, count));
    }
}

TEST(damaged_library, what_the_fuzz_target_was_fed_has_a_defined_outcome)
{
    constexpr std::size_t choices = 8;
    int files = 0;
    for (const char* kind : {"/seeds/library", "/found/library"}) {
        const std::string folder = std::string{TAMRIX_FUZZ_FOLDER} + kind;
        if (!std::filesystem::exists(folder)) continue;
        for (const auto& entry : std::filesystem::directory_iterator{folder}) {
            SCOPED_TRACE(entry.path().string());
            life_fixture f;
            use_everywhere(f, read_text(entry.path().string()).substr(choices));
            ++files;
        }
    }
    EXPECT_GE(files, 3);
}

}  // namespace
}  // namespace tamrix::tests
