#include "sim/wave_generator.h"

#include <algorithm>
#include <iterator>

namespace tamrix::sim {

namespace {

constexpr int first_model_with_timer = 40, new_generation = 17;
/// Half a period in microseconds, times a frequency in hertz.
constexpr double half_second = 500000;
/// The long loop counts in ticks of 8/9 microseconds.
constexpr double tick_microseconds = 8.0 / 9;
constexpr int stage = 256;

/// The clock of the loop on USB.
enum class crystal : std::uint8_t { old, fast, plain };

crystal crystal_of(int model, int generation)
{
    if (model < 5) return generation == new_generation ? crystal::fast : crystal::old;
    if (model == 9 || model == 10 || model == 13 || model == 14) return crystal::fast;
    return crystal::plain;
}

double megahertz(crystal which) { return which == crystal::old ? 28.636 : which == crystal::fast ? 33 : 24; }

double short_loop_microseconds(wave_loop loop, int model, int generation, int count)
{
    if (loop == wave_loop::registers) {
        const double counts_in_8 = generation == new_generation ? 11 : 9;  // microseconds
        return (count - 1) * 8 / counts_in_8 + 4;
    }
    constexpr double clocks_of_a_cycle = 12;
    return (count * 2 + 7) * clocks_of_a_cycle / megahertz(crystal_of(model, generation));
}

/// What the long loop takes beside its counts, which a host adds to the ticks that it wants before it splits them.
struct overhead {
    int once, middle_pass, high_pass;
};

overhead overhead_of(wave_loop loop, int model, int generation)
{
    constexpr int high_pass = -514;
    if (loop == wave_loop::registers)
        return generation == new_generation ? overhead{-4, 45, high_pass} : overhead{-4, -2, high_pass};
    switch (crystal_of(model, generation)) {
    case crystal::old: return {0, 15, high_pass};
    case crystal::fast: return {-20, 55, high_pass};
    case crystal::plain: break;
    }
    return {0, -34, high_pass};
}

/// The shortest time, in ticks, after which the loop has made so many counts. In the middle stage's pass `b` and the
/// high stage's pass `c` it has made those of the time itself and of the overhead of all passes so far.
std::int64_t long_loop_ticks(const overhead& takes, std::int64_t counts)
{
    for (std::int64_t c = 0;; ++c) {
        for (std::int64_t b = 0; b < stage; ++b) {
            const std::int64_t begin = (c * stage + b) * stage;
            const std::int64_t made = begin + takes.once + b * takes.middle_pass + c * takes.high_pass;
            if (made + stage > counts) return begin + std::max<std::int64_t>(counts - made, 0);
        }
    }
}

/// The timer makes only these frequencies above the last limit; each is that of all values above a limit.
struct band {
    std::int32_t above;
    double hertz;
};
constexpr band bands[] = {{510000, 1000000}, {375000, 510000}, {200000, 247000}, {140000, 161000},
                          {112500, 125600},  {90000, 100000},  {76200, 80000},   {67500, 71400},
                          {59000, 62000},    {53000, 55900},   {49000, 50000}};

double timer_hertz(std::int32_t value)
{
    const auto* const found = std::ranges::find_if(bands, [=](const band& one) { return value > one.above; });
    return found == std::end(bands) ? value : found->hertz;
}

}  // namespace

wave_loop loop_of(int model, bool by_registers)
{
    if (model >= first_model_with_timer) return wave_loop::timer;
    return by_registers ? wave_loop::registers : wave_loop::usb;
}

double generated_hertz(wave_loop loop, int model, int generation, wave_divider divider)
{
    const int low = divider.low, middle = divider.middle, high = divider.high;
    if (loop == wave_loop::timer) return timer_hertz(low + stage * middle + stage * stage * high);
    // A stage counts down to 0: one that starts at 0 makes a whole round.
    if (middle == 0 && high == 0)
        return half_second / short_loop_microseconds(loop, model, generation, low == 0 ? stage : low);
    // The last passes of the upper stages end in their first count.
    const std::int64_t passes = middle + stage * (high == 0 ? stage - 1 : high - 1) - 1;
    const std::int64_t counts = std::max<std::int64_t>(low + stage * passes, 1);
    const std::int64_t ticks = long_loop_ticks(overhead_of(loop, model, generation), counts);
    return half_second / (static_cast<double>(std::max<std::int64_t>(ticks, 1)) * tick_microseconds);
}

}  // namespace tamrix::sim
