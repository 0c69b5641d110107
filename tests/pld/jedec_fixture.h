// A plug-in that reads fuse files, and what they left in it as text.
#pragma once

#include "support/plug_in_fixture.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tamrix::tests {

struct jedec_fixture : plug_in_fixture {
    explicit jedec_fixture(std::int32_t fuses = 100) : plug_in_fixture{{.buflength = 0x1000, .tlength = fuses}} {}

    void read(std::string_view text)
    {
        // A new name each time: some file systems make a file that is written over wait for the disk.
        std::string file = files.write(std::to_string(++reads_), text);
        const reply outcome = methods.readpldfile(file);
        EXPECT_TRUE(outcome.ok());
        EXPECT_EQ(outcome.value, variant{});
    }
    /// Fuses as text, with "." for what was never written.
    std::string fuses(std::int64_t first, std::int64_t count)
    {
        std::string text;
        for (const auto byte : bytes(first, count)) text += byte == untouched ? '.' : static_cast<char>(byte);
        return text;
    }
    std::string vector(std::size_t number) const
    {
        const std::string_view entry = variables.pld.pldvect(number - 1);
        return std::string{entry.substr(0, entry.find_last_not_of(' ') + 1)};
    }
    std::string why() const { return variables.transfer.why_it_failed.found; }

    temp_folder files;

private:
    int reads_ = 0;
};

}  // namespace tamrix::tests
