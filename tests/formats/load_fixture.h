// A plug-in with a load dialog that a test fills in as a person would.
#pragma once

#include "support/plug_in_fixture.h"
#include "support/temp_files.h"
#include "transfer/readfile.h"

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix::tests {

constexpr std::uint8_t untouched = plug_in_fixture::untouched;

/// What a person enters in the load dialog before OK; what is left out stays as the dialog opened.
struct load_entries {
    std::string to_buffer{};
    std::string from_file{};
    std::string size{};
    int format = -1;
    int from_mode = 0;
    int to_mode = 0;
    int clear = -1;
};

struct load_fixture : plug_in_fixture {
    using plug_in_fixture::plug_in_fixture;

    /// Opens the dialog on `file`, enters, presses OK once and yields the status. `then` runs after OK, the dialog
    /// perhaps still open.
    status load(const std::string& file, const load_entries& entries = {}, std::function<void(readfile&)> then = {})
    {
        shell.on_next_dialog([&](forms::form& shown) {
            auto& dialog = dynamic_cast<readfile&>(shown);
            if (entries.format >= 0) dialog.rfileOption2(entries.format).click();
            if (entries.clear >= 0) dialog.rfileOption1(entries.clear).click();
            dialog.rfilecombo1.pick(entries.from_mode);
            dialog.rfileCombo2.pick(entries.to_mode);
            if (!entries.to_buffer.empty()) dialog.rfileText1.enter(entries.to_buffer);
            if (!entries.from_file.empty()) dialog.rfileText2.enter(entries.from_file);
            if (!entries.size.empty()) dialog.rfileText3.enter(entries.size);
            dialog.okcom.click();
            stayed_open = dialog.is_open();
            if (then) then(dialog);
        });
        std::string name = file, folder = syspath;
        std::int16_t format = preselected;
        last_reply = methods.readfile0(name, format, folder);
        return static_cast<status>(variables.transfer.rformat);
    }

    std::string syspath;
    std::int16_t preselected = 0;
    reply last_reply;
    bool stayed_open = false;
};

/// Loads text or bytes with one format.
struct format_fixture : load_fixture {
    format_fixture(int format_index, const device& chosen = {}) : load_fixture{chosen}, format{format_index} {}

    status read(std::string_view content, load_entries entries = {})
    {
        entries.format = format;
        std::filesystem::remove(files.path("file"));  // on some systems writing a file over waits for the disk
        return load(files.write("file", content), entries);
    }
    status read(const std::vector<std::uint8_t>& content, load_entries entries = {})
    {
        return read(std::string_view{reinterpret_cast<const char*>(content.data()), content.size()},
                    std::move(entries));
    }
    /// The diagnostic without the folder.
    std::string why() const
    {
        diagnostic told = variables.transfer.why_it_failed;
        if (!told.file.empty()) told.file = std::filesystem::path{told.file}.filename().string();
        return told.text();
    }

    /// Why a load failed; the status where it did not.
    template <class bytes>
    std::string failure(const bytes& content, load_entries entries = {})
    {
        const status outcome = read(content, std::move(entries));
        return outcome == status::failed ? why() : "status " + std::to_string(static_cast<int>(outcome));
    }

    int format;
    temp_folder files;
};

/// What the bar shows over a file of `records` where it moves by `percent` at each `pace`-th.
inline std::vector<double> bar_over(int records, int pace, int percent)
{
    std::vector<double> values;
    for (int value = percent; records >= pace; records -= pace, value += percent) {
        values.push_back(value > 100 ? 98 : value);
        if (value > 100) break;  // it stays at 98
    }
    return values;
}

/// Two upper-case digits.
inline std::string hex2(unsigned value)
{
    char text[3];
    std::snprintf(text, sizeof text, "%02X", value & 0xFF);
    return text;
}

inline std::string hex_of(const std::vector<std::uint8_t>& data)
{
    std::string text;
    for (const auto byte : data) text += hex2(byte);
    return text;
}

/// Step and phase of the seven byte selections.
inline constexpr std::pair<int, int> selections[] = {{1, 0}, {2, 0}, {2, 1}, {4, 0}, {4, 1}, {4, 2}, {4, 3}};

}  // namespace tamrix::tests
