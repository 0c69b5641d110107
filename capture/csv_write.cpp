#include "capture/change_walk.h"
#include "capture/formats.h"
#include "capture/time_unit.h"

namespace tamrix::capture {

namespace {

/// A row a change: the time in seconds, then a level a channel.
class csv_text {
public:
    csv_text(const capture_head& head, byte_target& to)
        : period_{*head.period}, unit_{unit_for(period_)}, channels_{head.names.size()}, to_{to}
    {
        text_ = "; period " + period_.text() + "\nTime [s]";
        for (const auto& name : head.names) text_ += "," + name_of_column(name);
        text_ += '\n';
    }
    void add(std::uint64_t sample, std::uint8_t level)
    {
        // One digit ahead of the point at least.
        std::string time = std::to_string(period_.time_of(sample, unit_.femtoseconds));
        const auto decimals = static_cast<std::size_t>(unit_.decimals);
        if (time.size() <= decimals) time.insert(0, decimals + 1 - time.size(), '0');
        text_.append(time, 0, time.size() - decimals).append(1, '.').append(time, time.size() - decimals);
        for (std::size_t i = 0; i < channels_; ++i) {
            text_ += ',';
            text_ += level >> i & 1 ? '1' : '0';
        }
        text_ += '\n';
        if (text_.size() > most_gathered) flush();
        last_level_ = level;
    }
    /// The last levels again, where the capture ends.
    void end(std::uint64_t samples)
    {
        if (samples > 0) add(samples, last_level_);
        flush();
    }

private:
    static constexpr std::size_t most_gathered = 1 << 18;

    static std::string name_of_column(std::string name)
    {
        for (char& c : name) {
            if (static_cast<unsigned char>(c) < ' ' || c == ',' || c == '"') c = '_';
        }
        return name;
    }
    void flush()
    {
        to_.write({reinterpret_cast<const std::uint8_t*>(text_.data()), text_.size()});
        text_.clear();
    }

    sample_period period_;
    const time_unit& unit_;
    std::size_t channels_;
    byte_target& to_;
    std::string text_;
    std::uint8_t last_level_ = 0;
};

}  // namespace

void write_csv(sample_source& from, byte_target& to)
{
    csv_text text{from.head(), to};
    text.end(walk_changes(from, [&](auto sample, auto level, auto) { text.add(sample, level); }));
}

}  // namespace tamrix::capture
