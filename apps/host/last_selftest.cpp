#include "host/last_selftest.h"

#include "files/file_io.h"
#include "files/replace_file.h"
#include "host/user_folder.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace tamrix::host {

namespace {

constexpr std::string_view first_line = "tamrix self-test";
constexpr int highest_model = 0x7FFF;
constexpr int most_faults = 60000;            // above what any run can find
constexpr std::int64_t most_bytes = 8 << 20;  // so that a damaged file does not fill the memory
constexpr std::string_view passed = "passed", failed = "failed";

bool has_control(std::string_view text)
{
    return std::ranges::any_of(text, [](unsigned char letter) { return letter < ' ' || letter == 0x7F; });
}

/// What was found, short enough for a message.
std::string in_quotes(std::string_view text)
{
    constexpr std::size_t most_letters = 40;
    return '"' + std::string{text.substr(0, most_letters)} + (text.size() > most_letters ? "...\"" : "\"");
}

/// The lines of a whole file, each with its word at the beginning.
class kept_lines {
public:
    kept_lines(std::string path, std::string_view text) : path_{std::move(path)}, rest_{text} {}

    std::string_view line()
    {
        ++number_;
        const auto end = rest_.find('\n');
        if (end == std::string_view::npos) fail("the end of the file", "a whole line");
        const std::string_view found = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        if (has_control(found)) fail("a control character", "text");
        return found;
    }
    std::string_view after(std::string_view word)
    {
        const std::string_view found = line();
        if (found.size() <= word.size() + 1 || !found.starts_with(word) || found[word.size()] != ' ')
            fail(in_quotes(found), in_quotes(word) + " with a value");
        return found.substr(word.size() + 1);
    }
    int number_after(std::string_view word, int highest)
    {
        const std::string_view text = after(word);
        int value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc{} || end != text.data() + text.size() || value < 0 || value > highest)
            fail(in_quotes(text), "a number from 0 to " + std::to_string(highest));
        return value;
    }
    void end()
    {
        ++number_;
        if (!rest_.empty()) fail("more text", "the end of the file");
    }
    [[noreturn]] void fail(const std::string& found, const std::string& expected) const
    {
        throw std::runtime_error{path_ + ":" + std::to_string(number_) + ": " + found + " where " + expected +
                                 " was expected"};
    }

private:
    std::string path_;
    std::string_view rest_;
    int number_ = 0;
};

/// "2026-11-22 14:03", digit by digit.
bool is_time(std::string_view text)
{
    constexpr std::string_view shape = "0000-00-00 00:00";
    return std::ranges::equal(text, shape, [](unsigned char letter, char wanted) {
        return wanted == '0' ? letter >= '0' && letter <= '9' : letter == static_cast<unsigned char>(wanted);
    });
}

last_selftest parsed(kept_lines lines)
{
    if (const auto found = lines.line(); found != first_line) lines.fail(in_quotes(found), in_quotes(first_line));
    last_selftest test;
    test.when = lines.after("when");
    if (!is_time(test.when)) lines.fail(in_quotes(test.when), "a time");
    test.model = lines.number_after("model", highest_model);
    const std::string_view result = lines.after("result");
    if (result != passed && result != failed) lines.fail(in_quotes(result), "passed or failed");
    test.failed = result == failed;
    test.verdict = lines.after("verdict");
    const int faults = lines.number_after("faults", most_faults);
    for (int i = 0; i < faults; ++i) {
        if (test.faults.emplace_back(lines.line()).empty()) lines.fail("an empty line", "a fault");
    }
    lines.end();
    return test;
}

}  // namespace

last_selftest selftest_of(std::time_t time, int model, bool has_failed, std::string_view report)
{
    char when[64] = "";
    std::tm local{};
    if (::localtime_r(&time, &local) != nullptr) std::strftime(when, sizeof when, "%Y-%m-%d %H:%M", &local);
    last_selftest test{.when = when, .model = model, .failed = has_failed, .verdict = {}, .faults = {}};
    const auto next_line = [&report] {
        const std::string_view line = report.substr(0, report.find('\n'));
        report.remove_prefix(std::min(line.size() + 1, report.size()));
        return std::string{line};
    };
    test.verdict = next_line();
    while (!report.empty()) test.faults.push_back(next_line());
    return test;
}

std::string heading_of(const last_selftest& test)
{
    return test.when + ", model " + std::to_string(test.model) + ": " + test.verdict;
}

std::string words_of(const last_selftest& test)
{
    constexpr std::size_t named = 3;
    std::string words = heading_of(test);
    for (std::size_t i = 0; i < std::min(test.faults.size(), named); ++i)
        words += (i == 0 ? ": " : "; ") + test.faults[i];
    if (test.faults.size() > named) words += " and " + std::to_string(test.faults.size() - named) + " more";
    return words;
}

std::string last_selftest_file() { return user_data_folder() + "/last-selftest.txt"; }

void write_last_selftest(const std::string& path, const last_selftest& test)
{
    std::string text{first_line};
    text += "\nwhen " + test.when + "\nmodel " + std::to_string(test.model) + "\nresult ";
    text += test.failed ? failed : passed;
    text += "\nverdict " + test.verdict + "\nfaults " + std::to_string(test.faults.size()) + "\n";
    for (const std::string& fault : test.faults) text += fault + "\n";
    const std::filesystem::path folder = std::filesystem::path{path}.parent_path();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw std::runtime_error{folder.string() + ": " + error.message()};
    replace_file(path, text);
}

std::optional<last_selftest> read_last_selftest(const std::string& path)
{
    std::error_code none;
    if (std::filesystem::symlink_status(path, none).type() == std::filesystem::file_type::not_found)
        return std::nullopt;
    input_file file{path};
    if (file.length() > most_bytes) throw std::runtime_error{path + ": far too long"};
    const file_image content{file};
    return parsed({path, {reinterpret_cast<const char*>(content.bytes().data()), content.bytes().size()}});
}

}  // namespace tamrix::host
