#include "cli/fuse_files.h"

#include "base/arith.h"
#include "cli/attached_plug_in.h"
#include "cli/output_place.h"
#include "cli/remarks.h"
#include "cli/standard_streams.h"
#include "cli/temporary_folder.h"
#include "files/replace_file.h"
#include "files/text_lines.h"
#include "verify/jedec.h"
#include "verify/jedec_writer.h"
#include "verify/svf.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <string_view>

namespace tamrix::cli {

namespace {

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

/// What `verify` finds in a file, after damage has been shown and accepted.
template <class Reading>
Reading judged(Reading (*verify)(byte_source&, const std::string&), const std::string& in, bool accept_damage,
               console& con)
{
    const bool is_pipe = in == "-";
    const std::string name = is_pipe ? "standard input" : in;
    try {
        std::unique_ptr<byte_source> from;
        if (is_pipe) {
            from = std::make_unique<standard_input>();
        } else {
            from = std::make_unique<file_source>(in);
        }
        Reading found = verify(*from, name);
        judge(name, found, accept_damage, con);
        return found;
    } catch (const file_error& error) {
        fail(error.what());
    }
}

/// The lines of a text, each indented.
std::string indented(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        if (end != 0) result.append("\n  ").append(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

void tell_fuses(const jedec_reading& held, console& con)
{
    if (!held.header.empty()) con.status("note:" + indented(held.header));
    const std::size_t count = held.map.fuses.size();
    con.status("fuses: " + std::to_string(count) +
               ", of which 1: " + std::to_string(std::ranges::count(held.map.fuses, 1)) +
               ", by default: " + std::to_string(count - held.in_rows - held.missing) +
               ", not in the file: " + std::to_string(held.missing));
    con.status("fuse checksum: " + arith::hex_fixed(held.fuse_sum, 4));
    if (held.map.pins) con.status("pins: " + std::to_string(*held.map.pins));
    con.status("vectors: " + std::to_string(held.map.vectors.size()));
}

/// Lines for type and maker of the device, unless the file has them.
std::string header_with(std::string header, const jedec_options& options)
{
    for (const auto& [label, text] : {std::pair{"TYPE: ", options.type}, std::pair{"MAKER: ", options.maker}}) {
        const std::string line = label + text;
        if (text.empty() || header.find(line) != std::string::npos) continue;
        header += (header.empty() ? "" : "\n") + line;
    }
    return header;
}

void put(const std::string& word, std::string_view content)
{
    output_place place{word};
    place.target().write({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
    place.finish();
}

std::string whole_file(const std::string& path)
{
    const file_image image{path};
    return {image.bytes().begin(), image.bytes().end()};
}

/// What the plug-in's method writes for these fuses and vectors, by way of a file of its own: a failure leaves the
/// target alone.
std::string by_plug_in(const jedec_options& options, const fuse_map& map, std::int64_t page, std::int32_t language)
{
    const std::size_t words = map.fuses.size();
    if (words == 0) fail(options.in + ": no fuses in it; --words N says how many the device has");
    attached_plug_in plug_in{language};
    plug_in.blocks.value<std::int32_t>("tlength") = static_cast<std::int32_t>(words);
    plug_in.blocks.value<std::int16_t>("pagelength") = static_cast<std::int16_t>(page);
    plug_in.blocks.set_text("wtype", 0, options.type);
    plug_in.blocks.set_text("wcompany", 0, options.maker);
    plug_in.attach_buffer(static_cast<std::int32_t>(words));
    std::ranges::transform(map.fuses, plug_in.state.blocks.ibuffer.span().begin(),
                           [](std::uint8_t fuse) { return static_cast<std::uint8_t>('0' + fuse); });
    vector_list& vectors = plug_in.variables.pld.pldvect;
    for (std::size_t at = 0; at < std::min(map.vectors.size(), vector_list::entries); ++at) {
        vectors.store(at, map.vectors[at]);
    }
    const temporary_folder folder;
    std::string out = folder.path() + "out.jed";
    check_outcome(plug_in.methods.writepldfile(out), plug_in.variables.transfer.why_it_failed);
    return whole_file(out);
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

void jedec(const jedec_options& options, std::int32_t language, console& con)
{
    const std::int64_t page = number("--page", options.page, 10, 32767);
    std::optional<std::int64_t> words;
    if (options.words) words = number("--words", *options.words, 1, fuse_map::most_fuses);
    if (options.out == "-") con.data_on_output();

    jedec_reading held = judged(verify_jedec, options.in, options.accept_damage, con);
    fuse_map& map = held.map;
    tell_fuses(held, con);
    if (!options.out) return;
    if (words) map.fuses.resize(static_cast<std::size_t>(*words), static_cast<std::uint8_t>(map.default_fuse));
    map.header = header_with(map.header, options);
    if (options.as_plug_in) {
        put(*options.out, by_plug_in(options, map, page, language));
    } else {
        put(*options.out, jedec_file(map, static_cast<std::uint32_t>(page)));
    }
    con.status(*options.out + ": written in the form of the " + (options.as_plug_in ? "plug-in" : "standard, JESD3-C"));
}

void svf(const svf_options& options, std::int32_t language, console& con)
{
    const svf_reading held = judged(verify_svf, options.in, options.accept_damage, con);
    attached_plug_in plug_in{language};
    const temporary_folder folder;
    std::string source = options.in, made_in = folder.path();
    const reply outcome = plug_in.methods.readsvffile(source, made_in);
    check_outcome(outcome, plug_in.variables.transfer.why_it_failed);
    if (outcome.value == variant{std::int16_t{1}}) fail(options.in + ": an empty file");
    const std::string out = options.syspath + "pldtmp.svf";
    put(out, whole_file(made_in + "pldtmp.svf"));
    con.line("statements: " + std::to_string(held.statements) + ", bits shifted: " + std::to_string(held.bits_shifted));
    con.line(out);
}

}  // namespace tamrix::cli
