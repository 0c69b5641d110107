#include "instruments/wave/wave_divider.h"

#include "base/arith.h"

#include <charconv>

namespace tamrix {

namespace {

using arith::nearest;

constexpr std::uint8_t generation_of_faster_clock = 17;

std::uint8_t low_byte(std::int32_t value) { return static_cast<std::uint8_t>(value % 256); }

/// The frequency as it is shown: rounded down to a multiple of 100.
std::string hundreds(double hertz) { return std::to_string(nearest(hertz) / 100 * 100); }

double megahertz(const wave_source& source)
{
    switch (source.loop) {
    case hw::output_loop::by_generation: return source.generation == generation_of_faster_clock ? 33 : 28.636;
    case hw::output_loop::fast: return 33;
    default: return 24;
    }
}

/// Of a half period of less than 256 ticks.
wave_divider short_loop(std::int32_t ticks, const wave_source& source)
{
    constexpr std::int32_t shortest = 4, overhead = 3;
    const bool faster = source.generation == generation_of_faster_clock;
    if (ticks <= shortest) return {.lo = 1, .shown = source.usb ? "132500" : faster ? "148000" : "125000"};
    const std::int32_t lo = ticks - overhead;
    const double half_period =
        source.usb ? (lo * 2 + 7) * 12 / megahertz(source) : (lo - 1) * 8 / (faster ? 11.0 : 9.0) + 4;
    return {.lo = static_cast<std::uint8_t>(lo), .shown = hundreds(500000 / half_period)};
}

/// What the outer loops take of a half period: `b` passes of the middle one and `c` of the outermost.
double corrected(double ticks, std::int32_t b, std::int32_t c, const wave_source& source)
{
    const bool faster = source.generation == generation_of_faster_clock;
    if (!source.usb) return ticks - 4 + (faster ? b * 45 : b * -2) - c * 514;
    switch (source.loop) {
    case hw::output_loop::by_generation: return faster ? ticks - 20 + b * 55 - c * 514 : ticks + b * 15 - c * 514;
    case hw::output_loop::fast: return ticks - 20 + b * 55 - c * 514;
    default: return ticks - b * 34 - c * 514;
    }
}

/// Of a longer one. The typed frequency stays.
wave_divider long_loop(double ticks, const wave_source& source)
{
    const std::int32_t whole = nearest(ticks);
    std::int32_t left = nearest(corrected(ticks, whole / 256 % 256, whole / 65536, source));
    wave_divider made{.lo = low_byte(left)};
    left = left / 256 + 1;
    made.mid = low_byte(left);
    left = left / 256 + 1;
    made.hi = low_byte(left);
    return made;
}

/// A frequency above `above` hertz of which this one is made.
struct fixed_frequency {
    std::int32_t above;
    const char* shown;
    std::int32_t sent;  // 0: as typed
};
constexpr fixed_frequency fixed_set[] = {
    {510000, "1000000", 0},     {375000, "510000", 500000}, {200000, "247000", 247000}, {140000, "161000", 161000},
    {112500, "125600", 125000}, {90000, "100000", 100000},  {76200, "80000", 80000},    {67500, "71400", 71000},
    {59000, "62000", 62000},    {53000, "55900", 55000},    {49000, "50000", 50000},
};

wave_divider from_fixed_set(std::int32_t hertz)
{
    wave_divider made;
    std::int32_t sent = hertz;
    for (const fixed_frequency& one : fixed_set) {
        if (hertz <= one.above) continue;
        made.shown = one.shown;
        if (one.sent != 0) sent = one.sent;
        break;
    }
    made.lo = low_byte(sent);
    made.mid = low_byte(sent / 256);
    made.hi = low_byte(sent / 65536);
    return made;
}

}  // namespace

std::int32_t typed_frequency(std::string_view text)
{
    std::int32_t hertz = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), hertz);
    if (error != std::errc{} || end != text.data() + text.size() || hertz < 0)
        throw frequency_error{"\"" + std::string{text} + "\" is no frequency from 0 to 2147483647 Hz"};
    return hertz;
}

wave_divider divide(std::int32_t hertz, const wave_source& source)
{
    if (source.loop == hw::output_loop::fixed_set) return from_fixed_set(hertz);
    if (hertz == 0) throw frequency_error{"a signal of 0 Hz has no period"};
    const double ticks = (500000.0 / hertz) / (8.0 / 9.0);  // of a half period
    const std::int32_t whole = nearest(ticks);
    return whole / 256 == 0 ? short_loop(whole, source) : long_loop(ticks, source);
}

}  // namespace tamrix
