#include "verify/svf.h"

#include "files/hex_digits.h"
#include "verify/svf_statement.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix {

namespace {

constexpr std::array<std::string_view, 4> values_of_scan{"TDI", "TDO", "MASK", "SMASK"};

/// The words between blanks.
std::vector<std::string_view> words_of(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    std::vector<std::string_view> words;
    for (std::size_t at = text.find_first_not_of(blanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(blanks, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(blanks, end);
    }
    return words;
}

class svf_verifier {
public:
    svf_verifier(byte_source& from, const std::string& name) : words_{from, name, result_} {}
    svf_reading read();

private:
    void judge(svf_statement& one);
    void judge_scan(svf_statement& one, const std::string& command);
    void judge_value(svf_statement& one, std::uint64_t length);
    void judge_runtest(svf_statement& one);
    void judge_frequency(svf_statement& one);
    void judge_state(svf_statement& one);
    void judge_pins(svf_statement& one);
    void judge_levels(svf_statement& one);

    svf_reading result_;
    svf_words words_;
    std::map<std::string, std::uint64_t> lengths_;  // of the last scan of each command; 0 ahead of the first
    std::optional<std::size_t> pins_;               // of PIOMAP
};

svf_reading svf_verifier::read()
{
    while (auto words = words_.next()) {
        ++result_.statements;
        svf_statement statement{*words, words_};
        judge(statement);
        statement.expect_end();
    }
    if (result_.statements == 0 && !result_.damaged()) words_.remark(words_.line(), "no statement", "");
    return std::move(result_);
}

void svf_verifier::judge(svf_statement& one)
{
    const std::string command = one.take_word("a command");
    if (command == "SIR" || command == "SDR" || command == "HIR" || command == "HDR" || command == "TIR" ||
        command == "TDR") {
        judge_scan(one, command);
    } else if (command == "RUNTEST") {
        judge_runtest(one);
    } else if (command == "STATE") {
        judge_state(one);
    } else if (command == "ENDIR" || command == "ENDDR") {
        one.take_stable_state();
    } else if (command == "FREQUENCY") {
        judge_frequency(one);
    } else if (command == "TRST") {
        one.take_one_of({"ON", "OFF", "Z", "ABSENT"}, "ON, OFF, Z or ABSENT");
    } else if (command == "PIOMAP") {
        judge_pins(one);
    } else if (command == "PIO") {
        judge_levels(one);
    } else {
        one.wrong_before("a command of SVF");
    }
}

/// Mask and data in stay as they were, as long as the length does.
void svf_verifier::judge_scan(svf_statement& one, const std::string& command)
{
    const auto length = one.take_whole_number("a count of bits");
    if (!length) return;
    const bool is_shift = command.starts_with('S');
    if (is_shift && *length == 0) one.wrong_before("1 bit or more");
    const bool is_new = std::exchange(lengths_[command], *length) != *length;
    std::array<bool, values_of_scan.size()> seen{};
    while (!one.at_end()) {
        const std::string name = one.take_one_of(values_of_scan, "TDI, TDO, MASK or SMASK");
        if (name.empty()) return;
        const auto index = std::ranges::find(values_of_scan, name) - values_of_scan.begin();
        if (std::exchange(seen.at(static_cast<std::size_t>(index)), true)) one.wrong_before(name + " once");
        judge_value(one, *length);
    }
    if (is_new && !seen[0]) one.wrong_at_end("TDI for the new length");
    if (!is_shift) return;
    const std::string rest = command.substr(1);
    result_.bits_shifted += *length + lengths_["H" + rest] + lengths_["T" + rest];
}

void svf_verifier::judge_value(svf_statement& one, std::uint64_t length)
{
    const svf_word* value = one.take_parentheses("a value in parentheses");
    if (value == nullptr) return;
    const std::uint64_t digits = length / 4 + (length % 4 != 0);
    if (value->no_digit != 0) {
        words_.remark(value->line, character_name(value->no_digit), "a hexadecimal digit");
    } else if (value->length != digits) {
        words_.remark(value->line, "digit count " + std::to_string(value->length),
                      std::to_string(digits) + " for " + std::to_string(length) + " bits");
    } else if (length % 4 != 0 && (hex_digits::digit(static_cast<std::uint8_t>(value->first)) >> (length % 4)) != 0) {
        words_.remark(value->line, "digit " + std::string{static_cast<char>(value->first)} + " at the front",
                      "a value of " + std::to_string(length) + " bits");
    }
}

/// RUNTEST [state] count TCK|SCK [seconds SEC [MAXIMUM seconds SEC]] [ENDSTATE state], or without the count.
void svf_verifier::judge_runtest(svf_statement& one)
{
    if (one.next_is_name() && !one.next_is("ENDSTATE")) one.take_stable_state();
    if (one.next_is("ENDSTATE")) one.wrong_next("a count or a time");
    if (one.at_end() && !one.is_wrong()) return one.wrong_at_end("a count or a time");
    const bool is_count = one.second_is("TCK") || one.second_is("SCK");
    if (is_count) {
        one.take_whole_number("a count of clocks");
        one.take_word("TCK or SCK");
    }
    if (!is_count || one.next_is_number()) {
        const auto least = one.take_seconds();
        if (one.next_is("MAXIMUM")) {
            one.take_word("MAXIMUM");
            const auto most = one.take_seconds();
            if (least && most && *most < *least) one.wrong("a maximum below the minimum", "at least as much");
        }
    }
    if (one.next_is("ENDSTATE")) {
        one.take_word("ENDSTATE");
        one.take_stable_state();
    }
}

void svf_verifier::judge_frequency(svf_statement& one)
{
    if (one.at_end()) return;  // back to full speed
    const auto cycles = one.take_number("a frequency");
    if (cycles && *cycles <= 0) one.wrong_before("a frequency above 0");
    one.take_one_of({"HZ"}, "HZ");
}

/// The states of a path; the last one is stable.
void svf_verifier::judge_state(svf_statement& one)
{
    while (!one.at_last()) {
        if (!one.take_state()) return;
    }
    one.take_stable_state();
}

/// PIOMAP (direction name direction name ...).
void svf_verifier::judge_pins(svf_statement& one)
{
    const svf_word* list = one.take_parentheses("a list of pins in parentheses");
    if (list == nullptr) return;
    const auto words = words_of(list->text);
    pins_ = words.size() / 2;
    if (words.empty() || words.size() % 2 != 0)
        words_.remark(list->line, "the end of the pins", "a direction and a name for each");
    for (std::size_t at = 0; at < words.size(); at += 2) {
        if (words[at] != "IN" && words[at] != "OUT" && words[at] != "INOUT") {
            words_.remark(list->line, std::string{words[at]}, "IN, OUT or INOUT");
        }
    }
}

/// PIO (a letter for each pin).
void svf_verifier::judge_levels(svf_statement& one)
{
    const svf_word* levels = one.take_parentheses("a list of levels in parentheses");
    if (levels == nullptr) return;
    if (!pins_) return words_.remark(levels->line, "PIO", "PIOMAP ahead of it");
    if (levels->length != *pins_)
        words_.remark(levels->line, "level count " + std::to_string(levels->length), std::to_string(*pins_));
    const auto wrong = levels->text.find_first_not_of("HLZUDX \t\r\n");
    if (wrong != std::string::npos)
        words_.remark(levels->line, character_name(static_cast<unsigned char>(levels->text[wrong])),
                      "H, L, Z, U, D or X");
}

}  // namespace

svf_reading verify_svf(byte_source& from, const std::string& name) { return svf_verifier{from, name}.read(); }

}  // namespace tamrix
