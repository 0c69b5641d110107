#include "cli/help_examples.h"

#include <span>

namespace tamrix::cli {

namespace {

struct command_examples {
    std::string_view command;
    std::string_view lines[2];
};

constexpr command_examples all_examples[] = {
    {"tamrix", {"tamrix convert firmware.hex firmware.bin", "tamrix help ttl test"}},
    {"tamrix convert",
     {"tamrix convert firmware.hex firmware.bin", "tamrix convert firmware.bin even.s19 --from-mode even"}},
    {"tamrix info", {"tamrix info firmware.hex", "tamrix info firmware.hex --json"}},
    {"tamrix compare", {"tamrix compare firmware.hex copy.s19", "tamrix compare firmware.hex copy.s19 --list"}},
    {"tamrix dump", {"tamrix dump firmware.hex", "tamrix dump firmware.hex --crop 0-FF"}},
    {"tamrix detect", {"tamrix detect firmware.hex", "tamrix detect *.hex *.jed"}},
    {"tamrix jedec", {"tamrix jedec decoder.jed", "tamrix jedec decoder.jed -o copy.jed"}},
    {"tamrix svf", {"tamrix svf decoder.svf --syspath .", "tamrix svf decoder.svf --syspath work/"}},
    {"tamrix ttl", {"tamrix ttl test 7400 --socket 7400", "tamrix ttl find --socket 74181"}},
    {"tamrix ttl list", {"tamrix ttl list", "tamrix ttl list --model 22"}},
    {"tamrix ttl show", {"tamrix ttl show 7400", "tamrix ttl show 7400 --model 22"}},
    {"tamrix ttl test", {"tamrix ttl test 7400 --socket 7400", "tamrix ttl test 74193 --socket 74193 --model 22"}},
    {"tamrix ttl find", {"tamrix ttl find --socket 74181", "tamrix ttl find --socket 74193 --route devobj"}},
    {"tamrix ttl add", {"tamrix ttl add MINE 14 rows.txt", "tamrix ttl add MINE 14 rows.txt --syspath work/"}},
    {"tamrix ttl delete", {"tamrix ttl delete 7400", "tamrix ttl delete 7400 --syspath work/"}},
    {"tamrix ttl reset", {"tamrix ttl reset", "tamrix ttl reset --model 22"}},
    {"tamrix vectors", {"tamrix vectors gate.jed --socket 7400", "tamrix vectors gate.jed --socket 7400 --model 22"}},
    {"tamrix selftest", {"tamrix selftest --brief", "tamrix selftest --item 6 --socket 'test board'"}},
    {"tamrix analyze",
     {"tamrix analyze record -o counter.bin --signal 'P21..P24 counter 20000'", "tamrix analyze draw signals.bin"}},
    {"tamrix analyze record",
     {"tamrix analyze record -o counter.bin --signal 'P21..P24 counter 20000'",
      "tamrix analyze record -o pulses.bin --signal 'P25 square 2000 duty 10' --trigger ext --pin P25"}},
    {"tamrix analyze draw",
     {"tamrix analyze draw signals.bin", "tamrix analyze draw signals.bin -o signals.svg --samples 400"}},
    {"tamrix analyze info", {"tamrix analyze info signals.bin", "tamrix analyze info signals.bin --period 3.4 --json"}},
    {"tamrix wave", {"tamrix wave meter --signal 'P23 square 440'", "tamrix wave generate 60000"}},
    {"tamrix wave meter",
     {"tamrix wave meter --signal 'P23 square 440'", "tamrix wave meter --from-generator 60000 --count 3"}},
    {"tamrix wave generate", {"tamrix wave generate 60000", "tamrix wave generate 1000000 --model 22"}},
    {"tamrix tour", {"tamrix tour", "tamrix tour > tour.txt"}},
    {"tamrix help", {"tamrix help convert", "tamrix help ttl test"}},
};

}  // namespace

std::string examples_of(std::string_view command)
{
    std::string text;
    for (const command_examples& some : all_examples) {
        if (some.command != command) continue;
        for (const std::string_view line : some.lines) text += (text.empty() ? "  " : "\n  ") + std::string{line};
    }
    return text;
}

}  // namespace tamrix::cli
