#include "capture/change_walk.h"
#include "capture/formats.h"
#include "capture/time_unit.h"

#include <charconv>

namespace tamrix::capture {

namespace {

class vcd_text {
public:
    vcd_text(const capture_head& head, byte_target& to)
        : period_{*head.period}, unit_{unit_for(period_)}, channels_{head.names.size()}, to_{to}
    {
        text_ = "$version tamrix $end\n$comment period " + period_.text() + " $end\n$timescale " + unit_.name +
                " $end\n$scope module capture $end\n";
        for (std::size_t i = 0; i < channels_; ++i) {
            text_ += std::string{"$var wire 1 "} + code(i) + ' ' + name_without_blanks(head.names[i]) + " $end\n";
        }
        text_ += "$upscope $end\n$enddefinitions $end\n";
        length_ = text_.size();
        text_.resize(length_ + capacity);
    }
    void add(std::uint64_t sample, std::uint8_t level, std::uint8_t before)
    {
        time(sample);
        if (sample == 0) words("$dumpvars\n");
        for (std::size_t i = 0; i < channels_; ++i) {
            if (!((level ^ before) >> i & 1)) continue;
            char* const at = text_.data() + length_;
            at[0] = level >> i & 1 ? '1' : '0';
            at[1] = code(i);
            at[2] = '\n';
            length_ += 3;
        }
        if (sample == 0) words("$end\n");
        if (length_ + longest_entry > text_.size()) flush();
    }
    /// Without the last time the last sample would be lost.
    void end(std::uint64_t samples)
    {
        time(samples);
        flush();
    }

private:
    static constexpr std::size_t capacity = 1 << 18, longest_entry = 100;

    static char code(std::size_t channel) { return static_cast<char>('!' + channel); }
    static std::string name_without_blanks(std::string name)
    {
        for (char& c : name) {
            if (static_cast<unsigned char>(c) <= ' ') c = '_';
        }
        return name.empty() || name == "$end" ? "_" + name : name;
    }
    void words(std::string_view added)
    {
        std::memcpy(text_.data() + length_, added.data(), added.size());
        length_ += added.size();
    }
    void time(std::uint64_t sample)
    {
        char* const at = text_.data() + length_;
        *at = '#';
        char* const end = std::to_chars(at + 1, at + 21, period_.time_of(sample, unit_.femtoseconds)).ptr;
        *end = '\n';
        length_ += static_cast<std::size_t>(end + 1 - at);
    }
    void flush()
    {
        to_.write({reinterpret_cast<const std::uint8_t*>(text_.data()), length_});
        length_ = 0;
    }

    sample_period period_;
    const time_unit& unit_;
    std::size_t channels_;
    byte_target& to_;
    std::string text_;
    std::size_t length_ = 0;
};

}  // namespace

void write_vcd(sample_source& from, byte_target& to)
{
    vcd_text text{from.head(), to};
    text.end(walk_changes(from, [&](auto sample, auto level, auto before) { text.add(sample, level, before); }));
}

}  // namespace tamrix::capture
