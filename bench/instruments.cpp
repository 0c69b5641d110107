// Times the logic analyzer. bench_instruments prints "NAME MILLISECONDS" for one run of each kind.
#include "cli/simulated_socket.h"
#include "forms/line_merger.h"
#include "instruments/analyzer/analyzer_capture.h"
#include "instruments/analyzer/analyzer_drawing.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace tamrix {

namespace {

constexpr int width = 1920, height = 700, twips_per_pixel = 15, banks = 16;
constexpr double first_zoom = width * twips_per_pixel / 32.0, narrowest_zoom = first_zoom / 256;

/// Of the processor, for this program.
double milliseconds() { return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

struct surface {
    std::size_t bars = 0;
    forms::line_merger merger{width, height, [this](const forms::line_merger::bar&) { ++bars; }};

    void draw(const std::vector<analyzer_line>& lines)
    {
        const auto pixels = [](forms::point at) {
            constexpr double scale = 1.0 / twips_per_pixel;
            return forms::point{forms::nearest_pixel(at.x * scale), forms::nearest_pixel(at.y * scale)};
        };
        for (const analyzer_line& one : lines) merger.add(pixels(one.from), pixels(one.to), one.ink);
        merger.flush();
        if (bars == 0) std::abort();
    }
};

analyzer_view view_of(double bitwidth, std::int32_t first)
{
    return {.size = {width * twips_per_pixel, height * twips_per_pixel}, .bitwidth = bitwidth, .viewpos = first};
}

std::vector<std::uint8_t> noise()
{
    std::vector<std::uint8_t> samples(std::size_t{banks} * bank_samples);
    std::uint32_t state = 1;
    for (std::uint8_t& one : samples) {
        state = state * 1664525 + 1013904223;
        one = static_cast<std::uint8_t>(state >> 24);
    }
    return samples;
}

void time_drawing()
{
    const std::vector<std::uint8_t> samples = noise();
    double started = milliseconds();
    surface screen;
    screen.draw(analyzer_lines(samples, view_of(narrowest_zoom, 0)));
    std::printf("narrowest_screen %.3f\n", milliseconds() - started);

    started = milliseconds();
    std::size_t lines = 0;
    for (int i = 0; i < 1000; ++i) lines += analyzer_lines(samples, view_of(first_zoom, 32 * i)).size();
    std::printf("thousand_screens %.3f\n", milliseconds() - started);
    std::printf("thousand_screens_lines %zu\n", lines);
}

/// What the dialog does with a capture, without a window.
class undisplayed final : public capture_display {
public:
    explicit undisplayed(session& plug_in) : plug_in_{plug_in} {}
    void clear() override {}
    void show_status(int panel, const std::string& words) override
    {
        if (panel == 1) status = words;
    }
    void enable_record(bool) override {}
    void enable_stop(bool) override {}
    void limit(int) override {}
    void draw() override
    {
        surface screen;
        screen.draw(analyzer_lines(plug_in_.blocks.ibuffer.span(), view_of(narrowest_zoom, 0)));
    }
    bool closed() const override { return false; }

    std::string status;

private:
    session& plug_in_;
};

/// All banks of the simulated programmer, with a square wave on each channel.
void time_record(const char* label, int hertz)
{
    cli::attached_plug_in plug_in{0};
    plug_in.attach_buffer(banks * bank_samples + 1);
    plug_in.state.blocks.rambknum(0) = banks;
    const cli::simulated_socket socket{plug_in, {.signals = [hertz] {
                                           std::vector<std::string> all;
                                           for (int pin = 21; pin <= 28; ++pin)
                                               all.push_back("P" + std::to_string(pin) + " square " +
                                                             std::to_string(hertz + pin));
                                           return all;
                                       }()}};
    plug_in.state.hardware.device();
    undisplayed display{plug_in.state};
    const double started = milliseconds();
    analyzer_capture capture{plug_in.state, plug_in.variables.analyzer, display};
    capture.record();
    std::printf("%s %.3f\n", label, milliseconds() - started);
    capture.leave_socket_safe();
    if (display.status != "Status:Record OK!") std::abort();
}

}  // namespace

}  // namespace tamrix

int main(int count, char**)
{
    if (count != 1) {
        std::fputs("usage: bench_instruments\n", stderr);
        return 2;
    }
    tamrix::time_drawing();
    tamrix::time_record("record_1_khz", 1000);
    tamrix::time_record("record_100_khz", 100'000);
}
