#include "cli/fuse_files.h"

#include "base/arith.h"
#include "cli/attached_plug_in.h"
#include "files/text_lines.h"

#include <charconv>
#include <string_view>

namespace tamrix::cli {

namespace {

constexpr std::int64_t most_fuses = 0x1000000;
constexpr std::int64_t room_behind = 1000;  // for signature and extra fuses

std::int64_t number(const std::string& option, const std::string& text, std::int64_t least, std::int64_t most)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < least || value > most) {
        refuse(option + " " + text + ": a number from " + std::to_string(least) + " to " + std::to_string(most) +
               " is expected");
    }
    return value;
}

void check_outcome(const reply& outcome, const diagnostic& why_it_failed)
{
    if (!outcome.ok()) fail(outcome.error);
    if (!why_it_failed.empty()) fail(why_it_failed.text());
}

/// How many fuses are "1", and how many the file left alone.
void tell_fuses(const session& state, const pld_variables& pld, std::int64_t words, console& con)
{
    std::int64_t ones = 0, untold = 0;
    for (const std::uint8_t fuse : state.blocks.ibuffer.span().first(static_cast<std::size_t>(words))) {
        ones += fuse == '1';
        untold += fuse != '0' && fuse != '1';
    }
    con.line("fuses: " + std::to_string(words) + ", of which 1: " + std::to_string(ones) +
             ", not in the file: " + std::to_string(untold));
    con.line("fuse checksum: " + arith::hex_fixed(pld.checksum & 0xFFFF, 4));
    con.line("vectors: " + std::to_string(pld.pldvectcnt - 1));
}

/// What the file does not say is written as 0: the writer accepts nothing else.
void fill_untold(session& state, std::int64_t words)
{
    for (std::uint8_t& fuse : state.blocks.ibuffer.span().first(static_cast<std::size_t>(words))) {
        if (fuse != '1') fuse = '0';
    }
}

}  // namespace

std::optional<std::int64_t> told_number(const std::string& path, std::string_view field, std::int64_t most)
{
    text_lines lines{path};
    while (const auto line = lines.next()) {
        for (std::size_t at = line->find(field); at != std::string_view::npos; at = line->find(field, at + 1)) {
            if (at != 0 && (*line)[at - 1] != '*') continue;
            std::int64_t count = 0;
            std::from_chars(line->data() + at + field.size(), line->data() + line->size(), count);
            if (count > 0 && count <= most) return count;
        }
    }
    return std::nullopt;
}

/// For a file that must give it.
static std::int64_t fuse_count(const std::string& path)
{
    const auto count = told_number(path, "QF", most_fuses);
    if (!count) refuse(path + ": does not give its fuse count (QF); --words N does");
    return *count;
}

void jedec(const jedec_options& options, std::int32_t language, console& con)
{
    const std::int64_t page = number("--page", options.page, 10, 32767);
    const std::int64_t words =
        options.words ? number("--words", *options.words, 1, most_fuses) : fuse_count(options.in);
    attached_plug_in plug_in{language};
    plug_in.blocks.value<std::int32_t>("tlength") = static_cast<std::int32_t>(words);
    plug_in.blocks.value<std::int16_t>("pagelength") = static_cast<std::int16_t>(page);
    plug_in.blocks.set_text("wtype", 0, options.type);
    plug_in.blocks.set_text("wcompany", 0, options.maker);
    plug_in.attach_buffer(static_cast<std::int32_t>(words + room_behind));

    std::string in = options.in;
    check_outcome(plug_in.methods.readpldfile(in), plug_in.variables.transfer.why_it_failed);
    if (!plug_in.variables.pld.note.empty()) con.line("note:" + plug_in.variables.pld.note);
    tell_fuses(plug_in.state, plug_in.variables.pld, words, con);
    if (!options.out) return;
    fill_untold(plug_in.state, words);
    std::string out = *options.out;
    check_outcome(plug_in.methods.writepldfile(out), plug_in.variables.transfer.why_it_failed);
}

void svf(const std::string& in, const std::string& syspath, std::int32_t language, console& con)
{
    attached_plug_in plug_in{language};
    std::string source = in, folder = syspath;
    const reply outcome = plug_in.methods.readsvffile(source, folder);
    check_outcome(outcome, plug_in.variables.transfer.why_it_failed);
    if (outcome.value == variant{std::int16_t{1}}) fail(in + ": an empty file");
    con.line(syspath + "pldtmp.svf");
}

}  // namespace tamrix::cli
