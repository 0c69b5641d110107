// A vector editor on a device or on a part of the library.
#pragma once

#include "ttl/dialogs/dialog_fixture.h"
#include "ttl/dialogs/ttledit.h"

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace tamrix::tests {

using key = forms::grid_key;

class ttledit_dialog : public logic_dialog_fixture {
protected:
    ttledit_dialog() { write_library({passing, failing, cmos}); }

    /// Puts a device of the library into work.
    void device(const std::string& name, int pins, const lines& rows)
    {
        variables.ttl.wnote = 0;
        variables.ttl.ttlname = name;
        variables.ttl.ttlpin = static_cast<std::int16_t>(pins);
        variables.ttl.ttlcnt = static_cast<std::int16_t>(rows.size() + 1);
        for (std::size_t i = 0; i < rows.size(); ++i) variables.ttl.ttlvect.store(i, rows[i]);
    }
    /// A device of 4 pins with so many rows: "0000", "1111", "HHHH", "LLLL", "XXXX", then again.
    void device_of(int rows)
    {
        static constexpr std::string_view letters = "01HLX";
        lines all;
        for (int row = 0; row < rows; ++row) all.emplace_back(4, letters[static_cast<std::size_t>(row) % 5]);
        device("7400", 4, all);
    }
    /// The host's programmable device and its vectors.
    void programmable_device(int pins, const lines& rows)
    {
        variables.ttl.wnote = 1;
        session.blocks.chippin(0) = static_cast<std::int16_t>(pins);
        variables.pld.pldvectcnt = static_cast<std::int32_t>(rows.size()) + 1;
        for (std::size_t i = 0; i < rows.size(); ++i) variables.pld.pldvect.store(i, rows[i]);
    }

    void edit(const std::function<void(ttledit&)>& steps)
    {
        ttledit dialog{session, variables.ttl, variables.pld};
        shell.during(dialog, [&] {
            calls();
            steps(dialog);
        });
    }

    /// Where the caret of the shown editor is.
    static int row_of(const ttledit& d) { return d.Text1.selection_start() / line(d); }
    static int column_of(const ttledit& d) { return d.Text1.selection_start() % line(d); }
    static int line(const ttledit& d) { return static_cast<int>(d.Text1.text().find('\n')) + 1; }
    static void put_caret(ttledit& d, int row, int column) { d.Text1.select(row * line(d) + column); }
    static void type(ttledit& d, std::string_view letters)
    {
        for (const char letter : letters) d.Text1.type(static_cast<char32_t>(letter));
    }
    static void press(ttledit& d, key which, int times = 1)
    {
        for (; times > 0; --times) d.Text1.key_down(which);
    }
};

/// Of the caret.
struct place {
    int row, column;
    bool operator==(const place&) const = default;
    friend void PrintTo(const place& at, std::ostream* out) { *out << "row " << at.row << " column " << at.column; }
};

/// A grid of 4 pins: letters in columns 6 to 9, the end of the line at 10.
class ttledit_keys : public ttledit_dialog {
protected:
    /// Where the caret is after it stood at a place and a key was pressed.
    place after(int rows, place start, key pressed)
    {
        device_of(rows);
        place result{};
        edit([&](ttledit& d) {
            put_caret(d, start.row, start.column);
            const std::string before = d.Text1.text();
            press(d, pressed);
            EXPECT_EQ(d.Text1.text(), before) << "a key that moves changes nothing";
            result = {row_of(d), column_of(d)};
        });
        return result;
    }
};

}  // namespace tamrix::tests
