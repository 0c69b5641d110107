// What is in a recording.
#include "cli/analyze.h"

#include "cli/capture.h"
#include "cli/json.h"
#include "cli/number_text.h"
#include "instruments/analyzer/analyzer_drawing.h"

namespace tamrix::cli {

namespace {

constexpr int first_pin = 21;

double hertz_of(const channel_facts& facts, double period_us) { return 1e6 / (*facts.samples_a_period * period_us); }

std::string line_of(int channel, const channel_facts& facts, double period_us)
{
    const std::string pin = "P" + std::to_string(first_pin + channel) + ": ";
    if (facts.edges == 0) return pin + "no edge, " + (facts.begins_high ? "high" : "low");
    const std::string edges = pin + std::to_string(facts.edges) + (facts.edges == 1 ? " edge, " : " edges, ");
    if (!facts.samples_a_period) return edges + formatted("high %.1f %% of the time", facts.high_part * 100);
    return edges + formatted("%.3f Hz, ", hertz_of(facts, period_us)) + formatted("duty %.1f %%", *facts.duty * 100);
}

std::string object_of(int channel, const channel_facts& facts, double period_us)
{
    const bool periodic = facts.samples_a_period.has_value();
    return json::object({{"pin", json::string("P" + std::to_string(first_pin + channel))},
                         {"edges", std::to_string(facts.edges)},
                         {"begins", json::string(facts.begins_high ? "high" : "low")},
                         {"high_percent", formatted("%.3f", facts.high_part * 100)},
                         {"hertz", periodic ? formatted("%.3f", hertz_of(facts, period_us)) : ""},
                         {"duty_percent", periodic ? formatted("%.3f", *facts.duty * 100) : ""}});
}

}  // namespace

void analyze_info(const capture_options& options, console& con)
{
    const auto samples = samples_of(options.file, con);
    const double milliseconds = static_cast<double>(samples.size()) * options.period_us / 1000;
    std::vector<std::string> objects;
    if (!options.json) {
        con.line(options.file + ": " + std::to_string(samples.size()) + formatted(" samples, %.3f ms", milliseconds) +
                 formatted(" at %.6g us a sample", options.period_us));
    }
    for (int channel = 0; channel < analyzer_channels; ++channel) {
        const channel_facts facts = facts_of(samples, channel);
        if (!options.json) con.line(line_of(channel, facts, options.period_us));
        objects.push_back(object_of(channel, facts, options.period_us));
    }
    if (!options.json) return;
    con.line(json::object({{"file", json::string(options.file)},
                           {"samples", std::to_string(samples.size())},
                           {"microseconds_a_sample", formatted("%.6g", options.period_us)},
                           {"milliseconds", formatted("%.3f", milliseconds)},
                           {"channels", json::array(objects)}}));
}

}  // namespace tamrix::cli
