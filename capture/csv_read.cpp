#include "capture/formats.h"
#include "capture/text_reader.h"

#include <charconv>

namespace tamrix::capture {

namespace {

/// The next cell of a row, without blanks and quotes around it.
std::string_view take_cell(std::string_view& row)
{
    const std::size_t end = std::min(row.find(','), row.size());
    std::string_view cell = row.substr(0, end);
    row.remove_prefix(std::min(end + 1, row.size()));
    const std::size_t first = std::min(cell.find_first_not_of(" \t\""), cell.size());
    cell.remove_prefix(first);
    return cell.substr(0, cell.find_last_not_of(" \t\"") + 1);
}

std::vector<std::string> cells_of(const text_reader& text, std::string_view row)
{
    std::vector<std::string> cells;
    while (!row.empty()) {
        if (cells.size() > most_file_channels) {
            text.fail("more than " + std::to_string(most_file_channels) + " channels");
        }
        cells.emplace_back(take_cell(row));
    }
    return cells;
}

/// Rows are changes with their times, or samples without.
class csv_source final : public sample_source {
public:
    csv_source(const std::string& path, const reading_options& options) : text_{path}
    {
        std::vector<std::string> columns = read_head();
        if (has_times_) columns.erase(columns.begin());
        columns_ = columns.size();
        // Where columns are called by their kind, a comment has the names.
        const bool has_kinds = std::ranges::all_of(columns, [](const auto& name) { return name == "logic"; });
        const channel_choice choice =
            choose_channels(path, has_kinds && names_.size() == columns_ ? names_ : columns, options);
        head_.names = choice.names;
        left_out_ = choice.left_out;
        if (options.period) head_.period = options.period;
        if (has_times_ && !head_.period) {
            fail_at(path, 0, "no time from one sample to the next", "a period or a rate");
        }
        places_.assign(columns_, 0);
        for (std::size_t i = 0; i < choice.taken.size(); ++i) {
            places_[choice.taken[i]] |= static_cast<std::uint8_t>(1u << i);
        }
    }
    std::size_t read(std::span<std::uint8_t> target) override
    {
        std::size_t count = 0;
        while (count < target.size() && (given_ < until_ || take_row())) {
            const std::size_t run = std::min<std::uint64_t>(until_ - given_, target.size() - count);
            std::memset(target.data() + count, level_, run);
            count += run;
            given_ += run;
            if (given_ == until_) level_ = next_level_;
        }
        return count;
    }
    double share() const override { return text_.share(); }

private:
    std::vector<std::string> read_head()
    {
        while (!text_.at_end()) {
            const std::string_view line = text_.line();
            if (line.starts_with(';')) {
                read_comment(line.substr(1));
            } else if (constexpr std::string_view rate = "META samplerate: "; line.starts_with(rate)) {
                take_rate(line.substr(rate.size()));
            } else if (!line.empty()) {
                auto columns = cells_of(text_, line);
                if (columns[0] == "0" || columns[0] == "1")
                    text_.fail("levels", "a row with the names of the channels");
                if (columns[0] == "samples") text_.fail("column \"samples\"", "times in seconds, or none");
                has_times_ = columns[0] == "Time [s]" || columns[0] == "Time" || columns[0] == "time";
                return columns;
            }
        }
        text_.fail("end of the file", "a row with the names of the channels");
    }
    void take_rate(std::string_view words)
    {
        head_.period = sample_period::of_rate_text(words);
        if (!head_.period) text_.fail("rate " + in_quotes(words), "a rate above 0");
    }
    void read_comment(std::string_view words)
    {
        constexpr std::string_view period = " period ", rate = " Samplerate: ", channels = " Channels (";
        if (words.starts_with(period)) {
            head_.period = sample_period::of_text(words.substr(period.size()));
            if (!head_.period) text_.fail("period " + in_quotes(words.substr(period.size())), "one from 1 ps to 100 s");
        } else if (words.starts_with(rate)) {
            take_rate(words.substr(rate.size()));
        } else if (const auto colon = words.find("): "); words.starts_with(channels) && colon != words.npos) {
            names_ = cells_of(text_, words.substr(colon + 3));
        }
    }
    /// Sets up to which sample the levels before the row last; false at the end.
    bool take_row()
    {
        while (!text_.at_end()) {
            const std::string_view line = text_.line();
            if (line.empty() || line.starts_with(';')) continue;
            take_cells(line);
            if (given_ < until_) return true;
            level_ = next_level_;
        }
        // The last row is the end if it changes nothing.
        const bool lasts = has_times_ && rows_ > 0 && !ended_ && (last_row_changes_ || rows_ == 1);
        ended_ = true;
        until_ += lasts;
        return lasts;
    }
    void take_cells(std::string_view row)
    {
        const std::uint64_t sample = has_times_ ? sample_of_time(take_cell(row)) : given_ + 1;
        const std::uint8_t before = next_level_;
        next_level_ = 0;
        for (std::size_t i = 0; i < columns_; ++i) {
            const std::string_view cell = take_cell(row);
            if (cell != "0" && cell != "1") text_.fail("level " + in_quotes(cell), "0 or 1");
            if (cell == "1") next_level_ |= places_[i];
        }
        if (!row.empty()) text_.fail("more cells than channels", std::to_string(columns_) + " levels");
        if (sample > most_samples) text_.fail("a row more", "at most " + std::to_string(most_samples) + " samples");
        if (!has_times_) level_ = next_level_;
        last_row_changes_ = next_level_ != before;
        until_ = sample;
        ++rows_;
    }
    /// Counted from the time of the first row.
    std::uint64_t sample_of_time(std::string_view time)
    {
        std::string digits{time};
        const std::size_t point = std::min(time.find('.'), time.size());
        if (point < time.size()) digits.erase(point, 1);
        const std::size_t decimals = digits.size() - point;
        std::uint64_t count = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
        if (error != std::errc{} || end != digits.data() + digits.size() || decimals > 15) {
            text_.fail("time " + in_quotes(time), "seconds with up to 15 decimals");
        }
        std::uint64_t unit = femtoseconds_of_second;
        for (std::size_t i = 0; i < decimals; ++i) unit /= 10;
        const auto sample = head_.period->sample_at(count, unit);
        if (!sample) text_.fail("time " + in_quotes(time), "at most " + std::to_string(most_samples) + " samples");
        if (rows_ == 0) first_ = *sample;
        if (*sample < first_ + until_) text_.fail("time " + in_quotes(time), "none before the row above");
        return *sample - first_;
    }

    text_reader text_;
    std::vector<std::string> names_;
    std::size_t columns_ = 0;
    std::vector<std::uint8_t> places_;  // of each column: the channel as a set
    std::uint64_t rows_ = 0, first_ = 0, until_ = 0, given_ = 0;
    std::uint8_t level_ = 0, next_level_ = 0;
    bool has_times_ = false, last_row_changes_ = false, ended_ = false;
};

}  // namespace

std::unique_ptr<sample_source> open_csv(const std::string& path, const reading_options& options)
{
    return std::make_unique<csv_source>(path, options);
}

}  // namespace tamrix::capture
