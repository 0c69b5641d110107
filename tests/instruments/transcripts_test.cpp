// Runs of the instruments, call by call, compared with the files that a separate model wrote.
#include "instrument_bench.h"
#include "instruments/wave/wave_divider.h"
#include "support/reviewed_lines.h"

#include <gtest/gtest.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace tamrix {
namespace {

using tests::instrument_bench;
using tests::lines;

/// A line of situations.txt: the name of a run, and what it meets.
class situation {
public:
    explicit situation(const std::string& line)
    {
        std::istringstream words{line};
        words >> name;
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            values_[word.substr(0, equals)] = word.substr(equals + 1);
        }
    }

    std::string name;

    /// The value for press number `press` of Record; the last one of a list holds for all that follow.
    std::string text(const std::string& key, const std::string& otherwise, int press = 0) const
    {
        const auto found = values_.find(key);
        if (found == values_.end()) return otherwise;
        std::istringstream list{found->second};
        std::string value;
        for (int i = 0; i <= press && std::getline(list, value, ','); ++i) {
        }
        return value;
    }
    /// -1 for "none".
    int number(const std::string& key, int otherwise, int press = 0) const
    {
        const std::string found = text(key, std::to_string(otherwise), press);
        return found == "none" ? -1 : std::stoi(found);
    }
    std::string whole(const std::string& key, const std::string& otherwise) const
    {
        const auto found = values_.find(key);
        return found == values_.end() ? otherwise : found->second;
    }
    bool usb() const { return text("route", "") == "usb"; }
    std::int16_t model() const { return static_cast<std::int16_t>(number("model", 0)); }
    std::uint8_t generation() const { return static_cast<std::uint8_t>(number("generation", 0)); }

private:
    std::map<std::string, std::string> values_;
};

std::string shortest(double value)
{
    char text[40];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

constexpr int most_single_lines = 3;  // a line that repeats oftener is counted

std::string many(int times) { return " (" + std::to_string(times) + " times)"; }

/// One press of Record after another, and what the person and the programmer do meanwhile.
class analyzer_player {
public:
    explicit analyzer_player(const situation& what)
        : what_{what}, b_{what.model(), what.usb(), what.generation(), what.number("buflength", 524288)}
    {
        std::ranges::fill(b_.session.blocks.ubuf1.span(), static_cast<std::uint8_t>(what.number("leftover", 0)));
        b_.session.blocks.rambknum(0) = static_cast<std::uint8_t>(what.number("banks", 1));
        b_.hardware.hwreset = [this] { return what_.text("reset", "answers", press_) == "absent" ? 1 : 0; };
        b_.hardware.regin = [this](std::int64_t k) { return read_port(k); };
        b_.hardware.read_bank = [this](int bank) {
            wait_ = "bank" + std::to_string(bank);
            pass_ = 0;
            if (bank == what_.number("bulk_fails", -1, press_)) return tests::bank_end::fails;
            return bank == what_.number("bulk_hangs", -1, press_) ? tests::bank_end::hangs : tests::bank_end::arrives;
        };
        b_.hardware.at_operation = [this](const char* name) {
            if (std::string_view{name} != "regin") end_reads();
        };
        b_.on_event = [this](const std::string& line) {
            recording_ = line == "status1 Status:Record....";
            end_reads();
        };
        b_.at_pump = [this] { pump(); };
    }

    lines play()
    {
        lines ran;
        bool open = true;
        b_.during_analyzer([&](analyzer& dialog) {
            dialog_ = &dialog;
            for (press_ = 0; press_ < what_.number("runs", 1); ++press_) press_record();
            open = dialog.is_open();
            ran = b_.transcript;
        });
        if (!open) ran = b_.transcript;  // with what closing does
        ran.push_back("sampleus " + shortest(b_.variables.analyzer.sampleus));
        return ran;
    }

private:
    void press_record()
    {
        auto& settings = b_.variables.analyzer;
        settings.trigmode = what_.text("trigger", "in", press_) == "ext" ? -1 : 0;
        settings.triglevel = what_.text("level", "low", press_) == "high" ? -1 : 0;
        settings.trigpin = static_cast<std::uint8_t>(what_.number("pin", 0, press_));
        wait_ = what_.usb() ? "reply" : "search";
        pass_ = 0;
        fails_at_ = what_.number("fails_at", -1, press_);
        answer_ = what_.number("answer", -1);
        dialog_->Command3.click();
    }

    /// The clock moves between the two times that are taken: after the first of the reads of a record.
    std::int32_t read_port(std::int64_t k)
    {
        if (++reads_ > 1) b_.transcript.pop_back();  // they are counted instead
        if (std::exchange(recording_, false)) b_.shell.advance(std::stod(what_.text("elapsed", "0.5", press_)));
        if (fails_at_ >= 0 && k >= fails_at_) return -1;
        return answer_ >= 0 ? answer_ : static_cast<std::int32_t>((7 * k + 3) % 256);
    }

    void pump()
    {
        ++pass_;
        const bool acts_here = what_.text("wait", "none", press_) == wait_;
        if (acts_here && pass_ == what_.number("pass", 1, press_)) {
            if (what_.text("act", "stop", press_) == "stop") return dialog_->Command4.click();
            return dialog_->ask_to_leave();
        }
        if (wait_.starts_with("bank")) return b_.shell.advance(1);
        if (pass_ <= what_.number("replies", 0, press_)) return b_.hardware.reply(0x55);
        if (wait_ == "reply" && !acts_here) b_.hardware.reply(0xAA);
    }

    /// Another line has come: says of the reads before it how many they were.
    void end_reads()
    {
        const int reads = std::exchange(reads_, 0);
        if (reads == 0) return;
        const auto last = b_.transcript.end() - 2;
        if (reads > most_single_lines) {
            *last += many(reads);
        } else {
            b_.transcript.insert(last, static_cast<std::size_t>(reads - 1), std::string{*last});
        }
    }

    const situation& what_;
    instrument_bench b_;
    analyzer* dialog_ = nullptr;
    std::string wait_;
    int press_ = 0, pass_ = 0, reads_ = 0, fails_at_ = -1, answer_ = -1;
    bool recording_ = false;  // since the last event
};

/// Start, ticks of the meter, Stop, and the close.
lines play_wave(const situation& what)
{
    instrument_bench b{what.model(), what.usb(), what.generation()};
    std::ranges::fill(b.session.blocks.ubuf1.span(), std::uint8_t{0});
    const bool meter = what.name.starts_with("meter");
    std::int32_t counted = 0;
    b.hardware.hwreset = [&] { return what.text("reset", "answers") == "absent" ? 1 : 0; };
    b.hardware.boardsel = [&] { return what.text("board", "answers") == "absent" ? 2 : 0; };
    b.hardware.ctlin = [&](std::uint8_t address) { return counted >> 8 * (address - 45) & 255; };
    b.hardware.at_operation = [&](const char* name) {
        if (std::string_view{name} != "ctlout" || !b.transcript.back().ends_with(" 140")) return;
        char text[40];
        const auto& frame = b.session.blocks.ubuf1;
        std::snprintf(text, sizeof text, "frame bytes 2 and 3: %02X %02X", frame(2), frame(3));
        b.transcript.insert(b.transcript.end() - 1, text);
    };
    const auto steps = [&](recetwave& dialog) {
        const std::string hertz = what.text("hertz", "empty");
        if (!meter) dialog.Text1.type(hertz == "empty" ? "" : hertz);
        dialog.bigan.click();
        std::istringstream counts{what.whole("counts", "1000,123456,16777215")};
        for (std::string count; dialog.Timer1.running() && std::getline(counts, count, ',');) {
            counted = std::stoi(count);
            for (int i = 0; i < 3; ++i) b.session.blocks.ibuf1(i) = static_cast<std::uint8_t>(counted >> 8 * i);
            b.shell.advance(0.8);
        }
        dialog.stopButton.click();
    };
    try {
        b.during_wave(meter, steps);
    } catch (const frequency_error&) {
        b.transcript.resize(static_cast<std::size_t>(std::ranges::find(b.transcript, "timer1 off") -
                                                     b.transcript.begin()));  // without the close
        b.transcript.emplace_back("error");
    }
    return b.transcript;
}

/// The first difference, with the lines before it.
std::string difference(const lines& wanted, const lines& played)
{
    const auto differs = std::ranges::mismatch(wanted, played);
    if (differs.in1 == wanted.end() && differs.in2 == played.end()) return {};
    const auto at = differs.in1 - wanted.begin();
    std::string text = "line " + std::to_string(at + 1) + "\n";
    for (auto line = std::max<std::ptrdiff_t>(at - 3, 0); line < at; ++line)
        text += "  " + wanted[static_cast<std::size_t>(line)] + "\n";
    const auto shown = [](auto from, auto end) { return from == end ? std::string{"(the end)"} : *from; };
    return text + "file " + shown(differs.in1, wanted.end()) + "\nplay " + shown(differs.in2, played.end());
}

TEST(a_run_of_an_instrument, makes_each_call_and_shows_each_text_that_the_separate_model_wrote)
{
    const std::filesystem::path folder{TAMRIX_INSTRUMENT_TRANSCRIPTS};
    std::ifstream situations{folder / "situations.txt"};
    int compared = 0;
    for (std::string line; std::getline(situations, line); ++compared) {
        const situation what{line};
        const lines played = what.name.starts_with("analyzer") ? analyzer_player{what}.play() : play_wave(what);
        EXPECT_EQ(difference(tests::reviewed_lines(folder / (what.name + ".txt")), played), "") << what.name;
    }
    EXPECT_GT(compared, 150);
}

}  // namespace
}  // namespace tamrix
