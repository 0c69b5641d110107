// The commands on the vector library itself.
#include "cli/logic_test.h"
#include "ttl/library/library.h"

#include "base/native_path.h"
#include "cli/folders.h"
#include "host/data_folder.h"
#include "host/user_folder.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace tamrix::cli {

namespace {

constexpr std::size_t longest_name = 12, most_rows = 254;
constexpr int most_pins = 40;

attached_plug_in& opened(attached_plug_in& plug_in, const ttl_options& options)
{
    plug_in.blocks.value<std::int16_t>("modeltype") = options.socket.model;
    plug_in.state.syspath = options.syspath;
    const std::string path = native_path(library_path(plug_in.state));
    check_folder_of(path);
    if (!std::filesystem::is_regular_file(path)) fail(path + ": no such library");  // opening it would create it
    return plug_in;
}

/// The name as the library writes it. Throws command_error where it is not there.
std::string listed(session& state, const std::string& name)
{
    const auto names = read_directory(state).names;
    if (std::ranges::find(names, name) == names.end())
        fail(name + ": not in the library; tamrix ttl list shows the names");
    return name;
}

int pin_count(const std::string& word)
{
    int pins = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), pins);
    const bool number = error == std::errc{} && end == word.data() + word.size();
    if (!number || pins < 2 || pins > most_pins || pins % 2 != 0) {
        refuse("PINS " + word + ": an even number from 2 to " + std::to_string(most_pins) + " is expected");
    }
    return pins;
}

std::string trimmed(std::string line)
{
    line.erase(std::min(line.find('#'), line.size()));
    std::erase_if(line, [](unsigned char c) { return c == ' ' || c == '\t' || c == '\r'; });
    return line;
}

void check_row(const std::string& where, const std::string& row, std::size_t pins)
{
    const auto unknown = row.find_first_not_of("10HLCKXVGZN");
    if (unknown != std::string::npos) {
        refuse(where + ": \"" + row.substr(unknown, 1) + "\" where a letter of 1 0 H L C K X V G Z N was expected");
    }
    if (row.size() != pins) {
        refuse(where + ": " + std::to_string(row.size()) + " letters where " + std::to_string(pins) + " were expected");
    }
}

std::vector<std::string> rows_of(const std::string& path, int pins)
{
    std::ifstream file{path};
    if (!file) refuse(path + ": cannot be read");
    std::vector<std::string> rows;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        std::string row = trimmed(line);
        if (row.empty()) continue;
        std::ranges::transform(row, row.begin(), [](unsigned char c) { return std::toupper(c); });
        check_row(path + ":" + std::to_string(number), row, static_cast<std::size_t>(pins));
        rows.push_back(row);
    }
    if (rows.empty()) refuse(path + ": no rows in it");
    if (rows.size() > most_rows)
        refuse(path + ": " + std::to_string(rows.size()) + " rows, more than the 254 that a record holds");
    if (std::ranges::count(rows[0], 'V') == 0 || std::ranges::count(rows[0], 'G') == 0) {
        refuse(path + ": the first row has no \"V\" and \"G\" for the supply pins");
    }
    return rows;
}

}  // namespace

void ttl_list(const ttl_options& options, console& con)
{
    attached_plug_in plug_in{options.language};
    for (const std::string& name : read_directory(opened(plug_in, options).state).names) con.line(name);
}

void ttl_show(const ttl_options& options, const std::string& name, console& con)
{
    attached_plug_in plug_in{options.language};
    session& state = opened(plug_in, options).state;
    ttl_variables& ttl = plug_in.variables.ttl;
    fetch_device(state, ttl, listed(state, name));
    con.line("pins: " + std::to_string(ttl.ttlpin));
    con.line("rows: " + std::to_string(ttl.ttlcnt - 1));
    for (int row = 0; row < ttl.ttlcnt - 1; ++row) {
        char number[16];
        std::snprintf(number, sizeof number, "V%04d ", row + 1);
        const std::string_view letters = ttl.ttlvect(static_cast<std::size_t>(row));
        con.line(number + std::string{letters.substr(0, letters.find_last_not_of(' ') + 1)});
    }
}

void ttl_add(const ttl_options& options, const std::string& name, const std::string& pins, const std::string& rows_file,
             console& con)
{
    const int count = pin_count(pins);
    if (name.empty() || name.size() > longest_name || name.find_first_of(" $*") != std::string::npos) {
        refuse("NAME " + name + ": 1 to 12 characters without blanks, \"$\" and \"*\" are expected");
    }
    const std::vector<std::string> rows = rows_of(rows_file, count);
    attached_plug_in plug_in{options.language};
    session& state = opened(plug_in, options).state;
    library_directory directory = read_directory(state);
    if (directory.count < 2) fail("a library with fewer than two devices takes no new one");
    const bool replaced = std::ranges::find(directory.names, name) != directory.names.end();
    ttl_variables& ttl = plug_in.variables.ttl;
    ttl.ttlname = name;
    ttl.ttlpin = static_cast<std::int16_t>(count);
    ttl.ttlcnt = static_cast<std::int16_t>(rows.size() + 1);
    ttlinsert(state, ttl, directory.names, rows);
    con.status(name + (replaced ? " replaced" : " added"));
}

void ttl_delete(const ttl_options& options, const std::string& name, console& con)
{
    attached_plug_in plug_in{options.language};
    session& state = opened(plug_in, options).state;
    listed(state, name);
    if (read_directory(state).count < 2) fail("the last device of a library cannot be deleted");
    ttldelete(state, name, 1);
    con.status(name + " deleted");
}

void ttl_reset(const ttl_options& options, console& con)
{
    attached_plug_in plug_in{options.language};
    session& state = plug_in.state;
    plug_in.blocks.value<std::int16_t>("modeltype") = options.socket.model;
    const auto library_in = [&](const std::string& folder) {
        state.syspath = folder;
        return native_path(library_path(state));
    };
    const std::string own = library_in(options.syspath), installed = library_in(host::data_folder() + "/");
    check_folder_of(own);
    const auto done = host::reset_library(installed, own);
    if (!done.kept_as.empty()) con.status(own + ": kept as " + done.kept_as);
    con.status(own + (done.changed ? ": the installed library again" : ": the installed library already"));
}

}  // namespace tamrix::cli
