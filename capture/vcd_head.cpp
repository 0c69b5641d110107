#include "capture/vcd_head.h"

#include <charconv>

namespace tamrix::capture {

namespace {

/// The words up to $end, with a blank between two.
std::string words_of_section(text_reader& text)
{
    std::string all;
    for (;;) {
        const std::string_view word = text.token();
        if (word == "$end") return all;
        if (word.empty()) text.fail("end of the file", "$end");
        if (all.size() > 100'000) text.fail("a section of more than 100000 letters", "$end");
        if (!all.empty()) all += ' ';
        all += word;
    }
}

std::uint64_t unit_of(text_reader& text, std::string_view words)
{
    const std::string_view all = words;
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(words.data(), words.data() + words.size(), number);
    words.remove_prefix(static_cast<std::size_t>(end - words.data()));
    if (words.starts_with(' ')) words.remove_prefix(1);
    std::uint64_t size = femtoseconds_of_second;
    for (const std::string_view name : {"s", "ms", "us", "ns", "ps", "fs"}) {
        if (name == words && error == std::errc{} && (number == 1 || number == 10 || number == 100)) {
            if (number > 1 && name == "s") break;
            return number * size;
        }
        size /= 1000;
    }
    text.fail("$timescale " + in_quotes(all), "1, 10 or 100 and a unit from fs to s");
}

/// Loggers say their rate in a comment, which times in rounded units do not.
void look_for_period(text_reader& text, std::string_view words, vcd_head& head)
{
    constexpr std::string_view own = "period ", others = " channels at ";
    if (words.starts_with(own)) {
        head.period = sample_period::of_text(words.substr(own.size()));
        if (!head.period) text.fail("comment " + in_quotes(words), "a period from 1 ps to 100 s");
    } else if (const auto at = words.find(others); words.starts_with("Acquisition with ") && at != words.npos) {
        head.period = sample_period::of_rate_text(words.substr(at + others.size()));
        if (!head.period) text.fail("rate " + in_quotes(words.substr(at + others.size())), "a rate above 0");
    }
}

std::uint64_t size_of_variable(text_reader& text, std::string_view size)
{
    std::uint64_t bits = 0;
    const auto [end, error] = std::from_chars(size.data(), size.data() + size.size(), bits);
    if (error != std::errc{} || end != size.data() + size.size() || bits == 0) {
        text.fail("size " + in_quotes(size) + " of a variable", "a number of bits");
    }
    return bits;
}

void add_variable(text_reader& text, std::string_view words, vcd_head& head)
{
    std::vector<std::string> parts{""};
    for (const char c : words) {
        if (c == ' ' && parts.size() < 4) {
            parts.emplace_back();
        } else if (c != ' ') {
            parts.back() += c;
        }
    }
    if (parts.size() < 4 || parts[3].empty()) text.fail("$var " + in_quotes(words), "kind, size, code and name");
    auto& bits = head.bits[parts[2]];
    const std::string& kind = parts[0];
    if (kind == "real" || kind == "realtime" || kind == "string") return;
    const std::uint64_t size = size_of_variable(text, parts[1]);
    if (size + head.names.size() > most_file_channels) {
        text.fail(std::to_string(head.names.size()) + " channels and " + std::to_string(size) + " more",
                  "at most " + std::to_string(most_file_channels));
    }
    if (!bits.empty()) return;  // another name of a variable
    // A range after the name of several bits says nothing that their numbers do not.
    const std::string name = size > 1 ? parts[3].substr(0, parts[3].rfind('[')) : parts[3];
    for (std::uint64_t bit = 0; bit < size; ++bit) {
        bits.push_back(head.names.size());
        head.names.push_back(size > 1 ? name + "[" + std::to_string(bit) + "]" : name);
    }
}

}  // namespace

vcd_head read_vcd_head(text_reader& text)
{
    vcd_head head;
    for (;;) {
        const std::string word{text.token()};
        if (word.empty()) text.fail("end of the file", "$enddefinitions");
        // Some say it ahead of all sections.
        if (word == "META") continue;
        if (word == "samplerate:") {
            const std::string rate{text.token()};
            head.period = sample_period::of_rate_text(rate);
            if (!head.period) text.fail("rate " + in_quotes(rate), "a rate above 0");
            continue;
        }
        if (word.front() != '$') text.fail(in_quotes(word), "a section");
        if (word == "$end") text.fail("$end", "a section");
        const std::string words = words_of_section(text);
        if (word == "$enddefinitions") return head;
        if (word == "$timescale") head.unit = unit_of(text, words);
        if (word == "$comment") look_for_period(text, words, head);
        if (word == "$var") add_variable(text, words, head);
    }
}

}  // namespace tamrix::capture
