#include "capture/capture_files.h"

#include "capture/formats.h"
#include "files/byte_source.h"
#include "files/replace_file.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace tamrix::capture {

namespace {

constexpr std::array<std::pair<std::string_view, file_format>, 4> words{
    {{"raw", file_format::raw}, {"vcd", file_format::vcd}, {"csv", file_format::csv}, {"sr", file_format::sr}}};

class memory_samples final : public sample_source {
public:
    memory_samples(const capture_head& head, std::span<const std::uint8_t> samples) : all_{samples}, rest_{samples}
    {
        head_ = head;
    }
    std::size_t read(std::span<std::uint8_t> target) override
    {
        const std::size_t count = std::min(target.size(), rest_.size());
        std::copy_n(rest_.begin(), count, target.begin());
        rest_ = rest_.subspan(count);
        return count;
    }
    double share() const override
    {
        return rest_.empty() ? 1 : 1 - static_cast<double>(rest_.size()) / static_cast<double>(all_.size());
    }

private:
    std::span<const std::uint8_t> all_, rest_;
};

/// Says how far the reading is with every piece.
class watched_source final : public sample_source {
public:
    watched_source(sample_source& from, const on_progress& progress) : from_{from}, progress_{progress}
    {
        head_ = from.head();
    }
    std::size_t read(std::span<std::uint8_t> target) override
    {
        if (progress_ && !progress_(from_.share())) throw stopped{};
        return from_.read(target);
    }
    double share() const override { return from_.share(); }

private:
    sample_source& from_;
    const on_progress& progress_;
};

/// Raw samples say nothing but themselves.
class raw_source final : public sample_source {
public:
    raw_source(const std::string& path, const reading_options& options) : file_{path}
    {
        if (!options.channels.empty()) fail_at(path, 0, "raw samples", "a file with names of channels");
        for (std::size_t i = 0; i < most_channels; ++i) head_.names.push_back("P" + std::to_string(21 + i));
        if (options.names.size() > most_channels) fail_at(path, 0, "more than 8 names");
        if (!options.names.empty()) head_.names = options.names;
        head_.period = options.period;
        mask_ = static_cast<std::uint8_t>((1u << head_.names.size()) - 1);
    }
    std::size_t read(std::span<std::uint8_t> target) override
    {
        const std::size_t count = file_.read_at(at_, target);
        at_ += static_cast<std::int64_t>(count);
        for (auto& sample : target.first(count)) sample &= mask_;
        return count;
    }
    double share() const override
    {
        return file_.length() == 0 ? 1 : static_cast<double>(at_) / static_cast<double>(file_.length());
    }

private:
    input_file file_;
    std::int64_t at_ = 0;
    std::uint8_t mask_;
};

void write_raw(sample_source& from, byte_target& to)
{
    std::vector<std::uint8_t> piece(piece_samples);
    while (const std::size_t count = from.read(piece)) to.write(std::span{piece}.first(count));
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

void fail_at(const std::string& path, std::uint64_t line, std::string found, std::string expected)
{
    diagnostic why;
    why.file = path;
    if (line > 0) why.line = line;
    why.found = std::move(found);
    why.expected = std::move(expected);
    throw file_error{std::move(why)};
}

channel_choice choose_channels(const std::string& path, const std::vector<std::string>& names,
                               const reading_options& options)
{
    if (names.empty()) fail_at(path, 0, "no channel");
    if (names.size() > most_file_channels) {
        fail_at(path, 0, std::to_string(names.size()) + " channels", "at most " + std::to_string(most_file_channels));
    }
    channel_choice choice;
    if (options.channels.size() > most_channels) fail_at(path, 0, "a choice of more than 8 channels");
    for (const auto& name : options.channels) {
        const auto found = std::ranges::find(names, name);
        if (found == names.end()) fail_at(path, 0, "no channel \"" + name + "\"");
        choice.taken.push_back(static_cast<std::size_t>(found - names.begin()));
    }
    for (std::size_t i = 0; options.channels.empty() && i < std::min(names.size(), most_channels); ++i) {
        choice.taken.push_back(i);
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (std::ranges::find(choice.taken, i) == choice.taken.end()) choice.left_out.push_back(names[i]);
    }
    for (const std::size_t place : choice.taken) choice.names.push_back(names[place]);
    if (options.names.size() > choice.names.size()) {
        fail_at(path, 0, std::to_string(choice.names.size()) + " channels",
                "one for each of " + std::to_string(options.names.size()) + " names");
    }
    std::ranges::copy(options.names, choice.names.begin());
    return choice;
}

std::optional<file_format> format_of_word(std::string_view word)
{
    const auto found = std::ranges::find(words, word, &std::pair<std::string_view, file_format>::first);
    return found == words.end() ? std::nullopt : std::optional{found->second};
}

file_format format_of_file(std::string_view path, std::span<const std::uint8_t> head)
{
    std::string extension{path.substr(std::min(path.size(), path.rfind('.') + 1))};
    std::ranges::transform(extension, extension.begin(), lower);
    if (const auto format = format_of_word(extension)) return *format;
    const std::string_view text{reinterpret_cast<const char*>(head.data()), head.size()};
    if (text.starts_with("PK\x03\x04")) return file_format::sr;
    for (const std::string_view word : {"$date", "$version", "$comment", "$timescale", "$scope", "$var"}) {
        if (text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size())).starts_with(word)) {
            return file_format::vcd;
        }
    }
    return file_format::raw;
}

std::unique_ptr<sample_source> source_of(const recording& capture, std::size_t first, std::size_t count)
{
    const auto rest = std::span{capture.samples}.subspan(std::min(first, capture.samples.size()));
    return std::make_unique<memory_samples>(capture.head, rest.first(std::min(count, rest.size())));
}

std::unique_ptr<sample_source> open_raw(const std::string& path, const reading_options& options)
{
    return std::make_unique<raw_source>(path, options);
}

std::unique_ptr<sample_source> open_capture(const std::string& path, file_format format, const reading_options& options)
{
    switch (format) {
    case file_format::vcd: return open_vcd(path, options);
    case file_format::csv: return open_csv(path, options);
    case file_format::sr: return open_sr(path, options);
    case file_format::raw: break;
    }
    return open_raw(path, options);
}

void write_capture(sample_source& from, const std::string& path, file_format format, const on_progress& progress)
{
    if (format != file_format::raw && !from.head().period) {
        fail_at(path, 0, "no time from one sample to the next", "a period or a rate");
    }
    file_replacement file{path};
    watched_source watched{from, progress};
    switch (format) {
    case file_format::raw: write_raw(watched, file); break;
    case file_format::vcd: write_vcd(watched, file); break;
    case file_format::csv: write_csv(watched, file); break;
    case file_format::sr: write_sr(watched, file, path); break;
    }
    file.take_place(file_replacement::lasts::killed_program);
}

recording load_capture(sample_source& from, const on_progress& progress, std::uint64_t most)
{
    recording loaded{from.head(), {}};
    watched_source watched{from, progress};
    std::vector<std::uint8_t> piece(piece_samples);
    while (const std::size_t count = watched.read(piece)) {
        if (loaded.samples.size() + count > most) fail_at({}, 0, "more than " + std::to_string(most) + " samples");
        loaded.samples.insert(loaded.samples.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return loaded;
}

}  // namespace tamrix::capture
