// The time from one sample to the next, exactly: a rate of 3 MHz has no period in whole picoseconds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix::capture {

inline constexpr std::uint64_t femtoseconds_of_second = 1'000'000'000'000'000;
/// No capture has more.
inline constexpr std::uint64_t most_samples = std::uint64_t{1} << 32;

/// A fraction of femtoseconds, from 1 ps to 100 s.
class sample_period {
public:
    /// None for what is out of range, or has a denominator above 10^12 in lowest terms.
    static std::optional<sample_period> of_femtoseconds(std::uint64_t numerator, std::uint64_t denominator = 1);
    static std::optional<sample_period> of_picoseconds(std::uint64_t count);
    static std::optional<sample_period> of_hertz(std::uint64_t hertz);
    /// "3.5us", "100 ns", "1/3000000 s"; units s, ms, us, ns, ps, fs. None for anything else.
    static std::optional<sample_period> of_text(std::string_view text);
    /// "3 MHz", "12.5kHz", "285714"; units Hz, kHz, MHz, GHz, none for hertz. None for anything else.
    static std::optional<sample_period> of_rate_text(std::string_view text);

    std::uint64_t numerator() const { return numerator_; }
    std::uint64_t denominator() const { return denominator_; }
    double seconds() const;
    /// The nearest whole number, at least 1; whether it is exact.
    std::uint64_t hertz() const;
    bool has_whole_hertz() const;
    /// When a sample, at most the 2^32nd, is taken, in units of `unit` femtoseconds; rounded from the index itself, so
    /// that no error adds up.
    std::uint64_t time_of(std::uint64_t sample, std::uint64_t unit) const;
    /// The sample next to a time in units of `unit` femtoseconds, at most a second; none after the 2^32nd.
    std::optional<std::uint64_t> sample_at(std::uint64_t time, std::uint64_t unit) const;
    /// A text that of_text() takes for the same: "3.5 us".
    std::string text() const;

    bool operator==(const sample_period&) const = default;

private:
    sample_period(std::uint64_t numerator, std::uint64_t denominator) : numerator_{numerator}, denominator_{denominator}
    {}

    std::uint64_t numerator_, denominator_;
};

}  // namespace tamrix::capture
