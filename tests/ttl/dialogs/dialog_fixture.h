// A plug-in with a vector library in a folder of its own and a programmer that writes down what it is asked.
#pragma once

#include "programmer/programmer.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tamrix::forms {

/// How a failed test shows a box.
inline void PrintTo(const message_box& box, std::ostream* out)
{
    *out << '"' << box.text << "\" under \"" << box.title << "\", icon " << static_cast<int>(box.picture)
         << ", buttons " << static_cast<int>(box.buttons);
}

}  // namespace tamrix::forms

namespace tamrix::tests {

using lines = std::vector<std::string>;

/// What a test says about the programmer, and what the programmer was asked. Only the acts of the dialogs themselves
/// are noted, not those of the vector runs.
struct programmer_notes {
    lines calls;
    std::vector<std::int32_t> resets;  // what the next resets yield; 0 when used up
    std::int32_t pins = 0xFF;          // what each port reads
    bool takes_frames = true, replies = true;
};

class noting_programmer final : public hw::programmer, private hw::lumbat, private hw::devobj {
public:
    explicit noting_programmer(programmer_notes& notes) : notes_{notes} {}
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { return *this; }

private:
    void note(const std::string& call) { notes_.calls.push_back(call); }

    std::int32_t usbcomwrite(const std::uint8_t*, std::int32_t) override { return notes_.takes_frames ? 0 : 1; }
    std::int32_t usbbulkwrite(const std::uint8_t*, std::int32_t) override { return 0; }
    std::int32_t usbbulkread(std::uint8_t*, std::int32_t, std::uint8_t*) override { return 0; }  // which never ends

    void setvcc(std::int32_t millivolts) override { note("setvcc " + std::to_string(millivolts)); }
    void busmode(std::int32_t mode) override { note("busmode " + std::to_string(mode)); }
    std::int32_t hwreset() override
    {
        note("hwreset");
        if (notes_.resets.empty()) return 0;
        const std::int32_t result = notes_.resets.front();
        notes_.resets.erase(notes_.resets.begin());
        return result;
    }
    void hwrelease() override { note("hwrelease"); }
    void hwfault() override { note("hwfault"); }
    void boardsel2(std::uint8_t first, std::uint8_t second) override
    {
        note("boardsel2 " + std::to_string(first) + " " + std::to_string(second));
    }
    std::int32_t regin(std::uint8_t) override { return notes_.pins; }

    void setvpp(std::int32_t, std::uint8_t) override {}
    void gndpin(std::uint8_t, std::uint8_t) override {}
    void vccpin(std::uint8_t, std::uint8_t) override {}
    void vpppin(std::uint8_t, std::uint8_t) override {}
    void hwinit() override {}
    std::int32_t ctlout(std::int32_t, std::uint8_t) override { return 0; }
    std::int32_t ctlin(std::uint8_t) override { return 0; }
    void regout(std::int32_t, std::uint8_t) override {}
    void delayms(std::int32_t) override {}
    void delayus(std::int32_t) override {}
    bool replywait(std::uint8_t, std::uint8_t, std::int32_t) override { return notes_.replies; }
    void vecout(std::int32_t, std::uint8_t) override {}
    void vecstart() override {}
    void vecbyte(std::uint8_t) override {}
    void vecdelay(std::int32_t) override {}
    void vecdelay2(std::int32_t) override {}
    void vecgnd(std::uint8_t, std::uint8_t) override {}
    void vecvcc(std::uint8_t, std::uint8_t) override {}
    void vecvpp(std::uint8_t, std::uint8_t) override {}
    void replycheck(std::int32_t) override {}
    std::int32_t boardsel(std::uint8_t) override { return 0; }

    programmer_notes& notes_;
};

/// A device of the library as a test names it.
struct record {
    std::string name;
    int pins;
    lines rows;
};

class logic_dialog_fixture : public testing::Test {
protected:
    logic_dialog_fixture()
    {
        session.hardware.source = [this](const hw::reply_memory&) {
            return std::make_unique<noting_programmer>(programmer);
        };
        session.hardware.replies = [] { return hw::reply_memory{nullptr, 0}; };
        session.syspath = folder.path("");
        session.blocks.modeltype(0) = 40;
        variables.ttl.ok = bool16_true;
    }

    /// A library whose directory is in the order of the records. `count` below 0: as many as there are.
    void write_library(const std::vector<record>& records, int count = -1)
    {
        const auto digits = [](int value, int width, int base) {
            std::string text;
            for (; width > 0; --width, value /= base)
                text.insert(text.begin(), "0123456789ABCDEF"[static_cast<std::size_t>(value % base)]);
            return text;
        };
        std::string header = "$KSM LIB001" + digits(count < 0 ? static_cast<int>(records.size()) : count, 4, 16), body;
        for (const record& one : records) {
            header += static_cast<char>(one.name.size()) + one.name;
            std::string name = one.name;
            name.resize(12, ' ');
            body +=
                "$" + name + digits(static_cast<int>(one.rows.size()) + 1, 2, 16) + '\x02' + digits(one.pins, 2, 10);
            for (const std::string& row : one.rows) body += static_cast<char>(one.pins) + row;
            body += "*\r\n";
        }
        std::filesystem::create_directories(folder.path("lib"));
        folder.write("lib/test.lib", header + "*\r\n" + body + "end-ksm\r\n");
    }
    std::string library() const { return read_text(folder.path("lib/test.lib")); }

    lines calls() { return std::exchange(programmer.calls, {}); }
    const std::vector<forms::message_box>& boxes() const { return plug_in.shell.whole_boxes(); }

    plug_in_fixture plug_in;
    scripted_shell& shell = plug_in.shell;
    tamrix::session& session = plug_in.session;
    module_variables& variables = plug_in.variables;
    temp_folder folder;
    programmer_notes programmer;

    /// Pins that float high pass the first one's row and fail the second one's.
    const record passing{"74PASS", 14, {"HHHHHHXHHHHHHV"}}, failing{"74FAIL", 14, {"LHHHHHXHHHHHHV"}};
    const record cmos{"4011", 14, {"HHHHHHXHHHHHHV"}};
};

}  // namespace tamrix::tests
