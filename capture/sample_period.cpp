#include "capture/sample_period.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>

namespace tamrix::capture {

namespace {

__extension__ using wide = unsigned __int128;

struct unit_name {
    std::string_view name;
    std::uint64_t size;
};
constexpr std::array<unit_name, 6> time_units{{{"s", femtoseconds_of_second},
                                               {"ms", femtoseconds_of_second / 1000},
                                               {"us", 1'000'000'000},
                                               {"ns", 1'000'000},
                                               {"ps", 1'000},
                                               {"fs", 1}}};
constexpr std::array<unit_name, 5> rate_units{
    {{"", 1}, {"Hz", 1}, {"kHz", 1'000}, {"MHz", 1'000'000}, {"GHz", 1'000'000'000}}};

struct fraction {
    std::uint64_t numerator, denominator;
};

void skip_blanks(std::string_view& text) { text.remove_prefix(std::min(text.find_first_not_of(' '), text.size())); }

/// A whole number, one with decimals or a fraction, of together at most 18 digits; what follows stays in `text`.
std::optional<fraction> take_number(std::string_view& text)
{
    skip_blanks(text);
    const std::size_t length = std::min(text.find_first_not_of("0123456789."), text.size());
    std::string digits{text.substr(0, length)};
    text.remove_prefix(length);
    std::uint64_t denominator = 1;
    if (const auto point = digits.find('.'); point != digits.npos) {
        digits.erase(point, 1);
        if (digits.size() > 18) return std::nullopt;
        for (std::size_t i = point; i < digits.size(); ++i) denominator *= 10;
    }
    std::uint64_t numerator = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), numerator);
    if (digits.empty() || digits.size() > 18 || error != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return fraction{numerator, denominator};
}

std::optional<std::uint64_t> size_of_unit(std::string_view name, const auto& units)
{
    skip_blanks(name);
    while (name.ends_with(' ')) name.remove_suffix(1);
    const auto found = std::ranges::find(units, name, &unit_name::name);
    return found == units.end() ? std::nullopt : std::optional{found->size};
}

/// Nothing where the product does not fit.
std::optional<std::uint64_t> product(std::uint64_t a, std::uint64_t b)
{
    const wide both = wide{a} * b;
    return both > ~std::uint64_t{0} ? std::nullopt : std::optional{static_cast<std::uint64_t>(both)};
}

/// a * b / c, as far as it fits after what the numbers have in common is gone.
std::optional<sample_period> period_of(std::uint64_t a, std::uint64_t b, std::uint64_t c)
{
    if (a == 0 || b == 0 || c == 0) return std::nullopt;
    const std::uint64_t first = std::gcd(a, c), second = std::gcd(b, c / first);
    const auto numerator = product(a / first, b / second);
    return numerator ? sample_period::of_femtoseconds(*numerator, c / first / second) : std::nullopt;
}

}  // namespace

std::optional<sample_period> sample_period::of_femtoseconds(std::uint64_t numerator, std::uint64_t denominator)
{
    if (numerator == 0 || denominator == 0) return std::nullopt;
    const std::uint64_t common = std::gcd(numerator, denominator);
    const sample_period period{numerator / common, denominator / common};
    constexpr std::uint64_t shortest = 1000, longest = 100 * femtoseconds_of_second;
    const bool fits = period.denominator_ <= 1'000'000'000'000 &&
                      wide{period.denominator_} * shortest <= period.numerator_ &&
                      period.numerator_ <= wide{period.denominator_} * longest && period.numerator_ <= longest;
    return fits ? std::optional{period} : std::nullopt;
}

std::optional<sample_period> sample_period::of_picoseconds(std::uint64_t count) { return period_of(count, 1000, 1); }

std::optional<sample_period> sample_period::of_hertz(std::uint64_t hertz)
{
    return of_femtoseconds(femtoseconds_of_second, hertz);
}

std::optional<sample_period> sample_period::of_text(std::string_view text)
{
    const auto number = take_number(text);
    if (!number) return std::nullopt;
    fraction value = *number;
    if (text.starts_with('/')) {
        text.remove_prefix(1);
        const auto divisor = take_number(text);
        if (!divisor || divisor->denominator != 1 || value.denominator != 1) return std::nullopt;
        value.denominator = divisor->numerator;
    }
    const auto unit = size_of_unit(text, time_units);
    return unit ? period_of(value.numerator, *unit, value.denominator) : std::nullopt;
}

std::optional<sample_period> sample_period::of_rate_text(std::string_view text)
{
    const auto number = take_number(text);
    const auto unit = number ? size_of_unit(text, rate_units) : std::nullopt;
    const auto hertz = unit ? product(number->numerator, *unit) : std::nullopt;
    return hertz ? period_of(femtoseconds_of_second, number->denominator, *hertz) : std::nullopt;
}

double sample_period::seconds() const
{
    return static_cast<double>(numerator_) / static_cast<double>(denominator_) /
           static_cast<double>(femtoseconds_of_second);
}

std::uint64_t sample_period::hertz() const
{
    const wide doubled = wide{2} * femtoseconds_of_second * denominator_ / numerator_;
    return std::max<std::uint64_t>(1, static_cast<std::uint64_t>((doubled + 1) / 2));
}

bool sample_period::has_whole_hertz() const { return wide{femtoseconds_of_second} * denominator_ % numerator_ == 0; }

std::uint64_t sample_period::time_of(std::uint64_t sample, std::uint64_t unit) const
{
    const wide divisor = wide{denominator_} * unit;
    return static_cast<std::uint64_t>((wide{sample} * numerator_ + divisor / 2) / divisor);
}

std::optional<std::uint64_t> sample_period::sample_at(std::uint64_t time, std::uint64_t unit) const
{
    const wide femtoseconds = wide{time} * unit;
    if (femtoseconds > wide{most_samples} * numerator_) return std::nullopt;  // so that the product below fits
    const wide sample = (femtoseconds * denominator_ + numerator_ / 2) / numerator_;
    return sample > most_samples ? std::nullopt : std::optional{static_cast<std::uint64_t>(sample)};
}

std::string sample_period::text() const
{
    if (denominator_ != 1) {
        // In seconds, where the numerator is small.
        const std::uint64_t common = std::gcd(numerator_, femtoseconds_of_second);
        if (const auto divisor = product(denominator_, femtoseconds_of_second / common)) {
            if (*divisor < femtoseconds_of_second) {
                return std::to_string(numerator_ / common) + "/" + std::to_string(*divisor) + " s";
            }
        }
        return std::to_string(numerator_) + "/" + std::to_string(denominator_) + " fs";
    }
    const auto unit = std::ranges::find_if(time_units, [&](const auto& one) { return one.size <= numerator_; });
    std::string decimals = std::to_string(unit->size + numerator_ % unit->size).substr(1);
    decimals.erase(decimals.find_last_not_of('0') + 1);
    return std::to_string(numerator_ / unit->size) + (decimals.empty() ? "" : "." + decimals) + " " +
           std::string{unit->name};
}

}  // namespace tamrix::capture
