// The notes of a device that a test describes.
#pragma once

#include "messages/catalogue.h"
#include "support/plug_in_fixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tamrix::tests {

class device_notes : public testing::Test, public plug_in_fixture {
protected:
    device_notes()
    {
        auto& blocks = session.blocks;
        blocks.modeltype(0) = 40;
        blocks.tlength(0) = 0x9010;
        blocks.pagelength(0) = 0x10;
        blocks.bvcch(0) = 0x40;
        blocks.bvcc(0) = 500;
        blocks.woption(0) = 1;
        blocks.woption(1) = 4;
        blocks.woption(3) = 0;
    }
    /// All four conditions of the power test.
    void need_power()
    {
        variables.ttl.ok = bool16_true;
        session.blocks.wfig(1) = 17;
        session.blocks.usbable(0) = bool16_true;
    }
    /// Calls the method as a host does; yields the number that it left.
    int call(int number, bool16 extpower0 = bool16_false)
    {
        auto no = static_cast<std::uint8_t>(number);
        EXPECT_TRUE(methods.warn(no, extpower0).ok());
        return no;
    }
    std::size_t boxes() const { return shell.whole_boxes().size(); }
    /// The text of the box that a call shows.
    std::string text_of(int number)
    {
        const std::size_t before = boxes();
        call(number);
        EXPECT_EQ(boxes(), before + 1) << "note " << number;
        return boxes() > before ? shell.whole_boxes().back().text : "";
    }
    std::string title_of(int number)
    {
        call(number);
        return shell.whole_boxes().empty() ? "" : shell.whole_boxes().back().title;
    }
};

/// A reviewed text; its line ends are the carriage returns of the note.
inline std::string reviewed(const std::string& name)
{
    std::ifstream file{TAMRIX_NOTES "/" + name + ".txt"};
    EXPECT_TRUE(file.is_open()) << name;
    std::string text{std::istreambuf_iterator<char>{file}, {}};
    for (char& letter : text) letter = letter == '\n' ? '\r' : letter;
    return text;
}

inline std::string name_of(int number)
{
    return std::string{number < 10 ? "note_0" : "note_"} + std::to_string(number);
}

inline bool has_box(int number) { return number >= 1 && number <= 25 && number != 19 && number != 20; }

}  // namespace tamrix::tests
