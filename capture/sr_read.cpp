#include "capture/sr_archive.h"
#include "capture/text_reader.h"

#include <charconv>
#include <map>

namespace tamrix::capture {

namespace {

std::string trimmed(std::string_view text)
{
    const std::size_t first = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    text.remove_prefix(first);
    return std::string{text.substr(0, text.find_last_not_of(" \t\r\n") + 1)};
}

std::string without_escapes(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        constexpr std::string_view letters = "sntr\\", kept = " \n\t\r\\";
        const std::size_t which = text[i] == '\\' && i + 1 < text.size() ? letters.find(text[i + 1]) : letters.npos;
        result += which == letters.npos ? text[i] : kept[which];
        i += which != letters.npos;
    }
    return result;
}

/// The settings of the first device.
std::map<std::string, std::string> device_of(const std::string& metadata)
{
    std::map<std::string, std::string> device;
    bool inside = false;
    for (std::size_t at = 0; at < metadata.size();) {
        const std::size_t end = std::min(metadata.find('\n', at), metadata.size());
        const std::string line = trimmed(std::string_view{metadata}.substr(at, end - at));
        at = end + 1;
        if (line.starts_with('[')) inside = line == "[device 1]";
        const std::size_t equals = line.find('=');
        if (!inside || equals == line.npos) continue;
        device[trimmed(std::string_view{line}.substr(0, equals))] =
            without_escapes(trimmed(std::string_view{line}.substr(equals + 1)));
    }
    return device;
}

class sr_source final : public sample_source {
public:
    sr_source(const std::string& path, const reading_options& options) : archive_{path}
    {
        const std::string version = trimmed(archive_.text_of("version"));
        if (version != "2") archive_.fail("version " + in_quotes(version), "2");
        device_ = device_of(archive_.text_of("metadata"));
        unit_ = number("unitsize", 128, 1);
        find_channels(path, options);
        head_.period = options.period;
        if (const auto rate = device_.find("samplerate"); rate != device_.end() && !head_.period) {
            head_.period = sample_period::of_rate_text(rate->second);
            if (!head_.period) archive_.fail("rate " + in_quotes(rate->second), "a rate above 0");
        }
        find_pieces();
    }
    std::size_t read(std::span<std::uint8_t> target) override
    {
        std::size_t count = 0;
        while (count < target.size() && (left_ > 0 || next_piece())) {
            units_.resize(std::min<std::uint64_t>((target.size() - count) * unit_, left_));
            read_units();
            take_units(target.subspan(count, units_.size() / unit_));
            count += units_.size() / unit_;
        }
        return count;
    }
    double share() const override { return bytes_ == 0 ? 1 : static_cast<double>(read_) / static_cast<double>(bytes_); }

private:
    std::uint64_t number(const std::string& key, std::uint64_t most, std::uint64_t otherwise) const
    {
        const auto found = device_.find(key);
        if (found == device_.end()) return otherwise;
        const std::string& text = found->second;
        std::uint64_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc{} || end != text.data() + text.size() || value == 0 || value > most) {
            archive_.fail(key + " " + in_quotes(text), "1 to " + std::to_string(most));
        }
        return value;
    }
    void find_channels(const std::string& path, const reading_options& options)
    {
        const std::uint64_t total = number("total probes", most_file_channels, 0);
        if (total > unit_ * 8) {
            archive_.fail(std::to_string(total) + " channels",
                          "at most 8 for each byte of unitsize " + std::to_string(unit_));
        }
        std::vector<std::string> names;
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < total; ++i) {
            const auto found = device_.find("probe" + std::to_string(i + 1));
            if (found == device_.end()) continue;  // it is switched off
            names.push_back(found->second);
            places.push_back(i);
        }
        const channel_choice choice = choose_channels(path, names, options);
        head_.names = choice.names;
        left_out_ = choice.left_out;
        for (const std::size_t one : choice.taken) places_.push_back(places[one]);
    }
    /// The samples are one entry, or several with numbers from 1.
    void find_pieces()
    {
        const std::string name = device_["capturefile"];
        if (name.empty() || name.find_first_of("/\\") != name.npos || name.starts_with('.')) {
            archive_.fail("capturefile " + in_quotes(name), "the name of an entry");
        }
        if (const auto whole = archive_.find(name)) pieces_.push_back(*whole);
        while (pieces_.empty() || pieces_[0].name != name) {
            const auto piece = archive_.find(name + "-" + std::to_string(pieces_.size() + 1));
            if (!piece) break;
            pieces_.push_back(*piece);
        }
        if (pieces_.empty()) archive_.fail("no entry " + in_quotes(name), "the samples");
        for (const auto& piece : pieces_) {
            if (piece.bytes % unit_ != 0) {
                archive_.fail(piece.name + " of " + std::to_string(piece.bytes) + " bytes",
                              "a multiple of " + std::to_string(unit_));
            }
            if (piece.bytes > most_samples * unit_ - bytes_) {
                archive_.fail(piece.name + " of " + std::to_string(piece.bytes) + " bytes",
                              "at most " + std::to_string(most_samples) + " samples");
            }
            bytes_ += piece.bytes;
        }
    }
    bool next_piece()
    {
        while (left_ == 0) {
            if (next_ == pieces_.size()) return false;
            file_ = archive_.open(pieces_[next_]);
            left_ = pieces_[next_++].bytes;
        }
        return true;
    }
    void read_units()
    {
        const auto& piece = pieces_[next_ - 1];
        for (std::size_t got = 0; got < units_.size();) {
            const std::size_t count = archive_.read(file_.get(), piece, std::span{units_}.subspan(got));
            if (count == 0)
                archive_.fail(piece.name + ": end of the data", std::to_string(left_ - got) + " bytes more");
            got += count;
        }
        left_ -= units_.size();
        read_ += units_.size();
        std::uint8_t more = 0;
        if (left_ == 0 && archive_.read(file_.get(), piece, {&more, 1}) > 0) {
            archive_.fail(piece.name + ": more than " + std::to_string(piece.bytes) + " bytes");
        }
    }
    void take_units(std::span<std::uint8_t> target) const
    {
        for (std::size_t i = 0; i < target.size(); ++i) {
            unsigned sample = 0;
            for (std::size_t k = 0; k < places_.size(); ++k) {
                sample |= (units_[i * unit_ + places_[k] / 8] >> places_[k] % 8 & 1u) << k;
            }
            target[i] = static_cast<std::uint8_t>(sample);
        }
    }

    sr_archive archive_;
    std::map<std::string, std::string> device_;
    std::uint64_t unit_ = 1;           // bytes a sample
    std::vector<std::size_t> places_;  // of each channel that is taken: its bit
    std::vector<sr_archive::entry> pieces_;
    std::size_t next_ = 0;
    sr_archive::open_entry file_;
    std::uint64_t left_ = 0, read_ = 0, bytes_ = 0;
    std::vector<std::uint8_t> units_;
};

}  // namespace

std::unique_ptr<sample_source> open_sr(const std::string& path, const reading_options& options)
{
    return std::make_unique<sr_source>(path, options);
}

}  // namespace tamrix::capture
