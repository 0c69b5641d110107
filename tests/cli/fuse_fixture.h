// A folder with fuse files, and the commands and the other tool that read them.
#pragma once

#include "cli/convert_fixture.h"

#include <cstdio>
#include <string>
#include <vector>

namespace tamrix::tests {

/// The 16-bit sum of the fuses' bytes, as the C field has it.
inline std::string sum_of_fuses(const std::string& fuses)
{
    unsigned sum = 0;
    for (std::size_t at = 0; at < fuses.size(); ++at) sum += (fuses[at] == '1' ? 1u : 0u) << (at % 8);
    char text[8];
    std::snprintf(text, sizeof text, "%04X", sum % 0x10000);
    return text;
}

class fuse_files : public convert_test {
protected:
    command_result run(std::vector<std::string> arguments, const std::string& standard_input = {})
    {
        return tamrix_command(arguments, {.folder = folder.path(""), .standard_input = standard_input});
    }
    bool jedutil_takes(const std::string& from, const std::string& to)
    {
        return run_program({"jedutil", "-convert", from, to}, {.folder = folder.path("")}).status == 0;
    }
    /// The fuses of a file as the other tool sees them, as text.
    std::string fuses_by_jedutil(const std::string& file)
    {
        EXPECT_TRUE(jedutil_takes(file, "fuses.bin")) << file;
        const auto packed = read_bytes(folder.path("fuses.bin"));
        const std::size_t count = packed.at(0) << 24 | packed.at(1) << 16 | packed.at(2) << 8 | packed.at(3);
        std::string text;
        for (std::size_t i = 0; i < count; ++i) text += packed.at(4 + i / 8) >> (i % 8) & 1 ? '1' : '0';
        return text;
    }
    /// The fuses of the rows of a file that was written here.
    std::string fuses_of_rows(const std::string& file)
    {
        std::string text;
        const std::string written = read_text(folder.path(file));
        for (std::size_t at = written.find("\nL"); at != std::string::npos; at = written.find("\nL", at + 1)) {
            const std::size_t begin = written.find(' ', at) + 1;
            text += written.substr(begin, written.find('*', at) - begin);
        }
        return text;
    }
    /// The fuses of a file as this program sees them, who writes them in the form that `options` asks for.
    std::string fuses_by_tamrix(const std::string& file, const std::vector<std::string>& options = {})
    {
        std::vector<std::string> arguments{"jedec", file, "-o", "written.jed"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return fuses_of_rows("written.jed");
    }
    static std::string random_fuses(std::size_t count, unsigned seed = 5)
    {
        std::string text;
        for (const auto byte : random_bytes(count, seed)) text += static_cast<char>('0' + (byte & 1));
        return text;
    }
    void write_packed(const std::string& name, const std::string& fuses)
    {
        std::string packed;
        for (int shift = 24; shift >= 0; shift -= 8) packed += static_cast<char>(fuses.size() >> shift);
        for (std::size_t i = 0; i < fuses.size(); i += 8) {
            int byte = 0;
            for (std::size_t bit = 0; bit < 8 && i + bit < fuses.size(); ++bit) byte |= (fuses[i + bit] - '0') << bit;
            packed += static_cast<char>(byte);
        }
        folder.write(name, packed);
    }
    /// A sound file in one piece.
    void write_fuses(const std::string& name, const std::string& fuses, const std::string& more = {})
    {
        folder.write(name, framed("Title*\nQF" + std::to_string(fuses.size()) + "*\nL0000 " + fuses + "*\n" + more));
    }
    static std::string framed(const std::string& text) { return "\x02" + text + "\x03" + "0000"; }
};

}  // namespace tamrix::tests
