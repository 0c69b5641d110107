#include "cli/wave.h"

#include "cli/number_text.h"
#include "cli/transcript_file.h"
#include "instruments/wave/recetwave.h"
#include "instruments/wave/wave_divider.h"
#include "sim/wave_generator.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>

namespace tamrix::cli {

namespace {

struct generated {
    std::string shown;
    sim::wave_divider divider;
};

/// To a tenth, without a sign of nothing.
double parts_per_million(double given, double asked)
{
    if (asked == 0) return 0;
    return std::round((given - asked) / asked * 1e7) / 10 + 0.0;
}

/// A programmer, and a person at the two dialogs.
class wave_bench {
public:
    wave_bench(const wave_options& options, std::int32_t language)
        : options_{options}, transcript_{options.transcript}, plug_in_{language}, socket_{plug_in_, options.socket}
    {
        socket_.log().record(true);
        plug_in_.variables.wave.on_event = [this](const std::string& event) { socket_.log().line("dialog ", event); };
    }

    /// Does it, and writes the transcript, also of what ends in an error.
    template <class Work>
    void do_and_write(const Work& work)
    {
        try {
            work();
        } catch (const command_error&) {
            transcript_.write(socket_.log());
            throw;
        }
        transcript_.write(socket_.log());
    }

    /// Starts the generator and stops it.
    generated generate()
    {
        generated made;
        std::string refusal;
        run(bool16_false, [&](recetwave& dialog) {
            dialog.Text1.type(options_.hertz);
            try {
                dialog.bigan.click();
            } catch (const frequency_error& error) {
                refusal = error.what();
                return;
            }
            made.shown = dialog.Text1.text();
            dialog.stopButton.click();
        });
        if (!refusal.empty()) refuse(options_.hertz_word + " " + options_.hertz + ": " + refusal);
        made.divider = received_divider();
        return made;
    }

    /// The texts of as many readings as are wanted.
    std::vector<std::string> measure()
    {
        std::vector<std::string> readings;
        run(bool16_true, [&](recetwave& dialog) {
            dialog.bigan.click();
            while (dialog.Timer1.running() && static_cast<int>(readings.size()) < options_.count) {
                socket_.let_pass(std::chrono::milliseconds{dialog.Timer1.interval_ms()});
                dialog.Timer1.tick();
                readings.push_back(dialog.Text1.text());
            }
            dialog.stopButton.click();
        });
        if (readings.empty()) no_answer();
        return readings;
    }

    void report_hazards(console& con) const { socket_.tell_hazards(con); }

private:
    /// Shows the dialog.
    template <class Steps>
    void run(bool16 meter, const Steps& steps)
    {
        plug_in_.screen.person = [&](forms::form& shown) {
            if (auto* const dialog = dynamic_cast<recetwave*>(&shown)) steps(*dialog);
        };
        const reply outcome = plug_in_.methods.recetwave0(meter);
        if (!outcome.ok()) throw command_error{exit_not_carried_out, outcome.error};
    }

    /// As it came to the programmer, which says so in its journal.
    sim::wave_divider received_divider()
    {
        constexpr std::string_view start = "-> divider ";
        for (const sim::event& event : socket_.log().lines()) {
            if (!event.text.starts_with(start)) continue;
            unsigned value = 0;
            std::from_chars(event.text.data() + start.size(), event.text.data() + event.text.size(), value);
            return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
                    static_cast<std::uint8_t>(value >> 16)};
        }
        no_answer();
    }

    [[noreturn]] static void no_answer() { throw command_error{exit_not_carried_out, programmer_is_silent}; }

    const wave_options& options_;
    transcript_file transcript_;
    attached_plug_in plug_in_;
    simulated_socket socket_;
};

}  // namespace

void wave_meter(const wave_options& options, std::int32_t language, console& con)
{
    wave_bench bench{options, language};
    std::vector<std::string> readings;
    bench.do_and_write([&] {
        if (!options.hertz_word.empty()) (void)bench.generate();
        readings = bench.measure();
    });
    std::vector<double> hertz;
    for (const std::string& reading : readings) {
        con.line(reading);
        hertz.push_back(std::stod(reading));
    }
    const double mean = std::accumulate(hertz.begin(), hertz.end(), 0.0) / static_cast<double>(hertz.size());
    const auto [lowest, highest] = std::ranges::minmax(hertz);
    con.line(formatted("mean %.1f Hz", mean));
    con.line(formatted("lowest %.0f Hz", lowest));
    con.line(formatted("highest %.0f Hz", highest));
    bench.report_hazards(con);
}

void wave_generate(const wave_options& options, std::int32_t language, console& con)
{
    wave_bench bench{options, language};
    generated made;
    bench.do_and_write([&] { made = bench.generate(); });
    const auto& [model, usb, generation, chip, faults, signals] = options.socket;
    const double asked = std::stod(options.hertz);
    const double given = sim::generated_hertz(sim::loop_of(model, !usb), model, generation, made.divider);
    con.line("asked " + options.hertz);
    con.line("shown " + made.shown);
    con.line("divider " + std::to_string(made.divider.low) + " " + std::to_string(made.divider.middle) + " " +
             std::to_string(made.divider.high));
    con.line(formatted("given %.3f Hz", given));
    con.line(formatted("deviation %+.1f ppm", parts_per_million(given, asked)));
    if (given == 0) con.note("0 Hz is no signal");
    bench.report_hazards(con);
}

}  // namespace tamrix::cli
