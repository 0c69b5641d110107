#include "sim/instruments.h"

#include "sim/signals/waves.h"

#include <string>
#include <utility>

namespace tamrix::sim {

namespace {

constexpr std::uint8_t pin_23 = 4;  // of port 0
/// Control registers: the upper bytes of the divider, the bytes of the count, the divider's low byte, the counter.
constexpr std::uint8_t middle_address = 43, high_address = 44, count_address = 45, divider_address = 140,
                       counter_address = 141;
constexpr std::size_t count_bytes = 3;
/// Of a frame of the analyzer.
constexpr std::uint8_t stop_code = 0, start_code = 1;
constexpr std::size_t start_length = 5;
/// A part in the socket sees so many changes of the signals between two looks.
constexpr int most_changes = 100'000;

}  // namespace

instruments::instruments(const surroundings& with, part_shelf chips)
    : with_{with}, signals_{std::move(chips)}, recorder_{with.time, with.replies}, counter_{with.time, with.replies}
{}

signal_walk instruments::walk() const
{
    std::vector<std::shared_ptr<const signal>> waves;
    if (running_hertz_ > 0) waves.push_back(std::make_shared<square_wave>(pin_23, running_hertz_));
    if (last_hertz_ > 0 && signals_.leads() != 0)
        waves.push_back(std::make_shared<square_wave>(signals_.leads(), last_hertz_));
    return signals_.walk(std::move(waves));
}

void instruments::begin()
{
    if (origin_) return;
    origin_ = with_.time->now();
    live_ = walk();
}

port_watch instruments::watch() const { return {walk(), with_.hardware.view_of_inputs(), *origin_}; }

void instruments::set_signals(signal_set wanted)
{
    signals_ = std::move(wanted);
    if (origin_) live_ = walk();
    update();
    look_for_conflict();
}

void instruments::update()
{
    if (!origin_) return;
    if (with_.faults.no_answer) {
        recorder_.stop();
        counter_.stop();
    }
    look(false);
    recorder_.change(watch(), with_.faults.no_trigger);
    counter_.change(watch(), with_.faults.no_count);
}

void instruments::reset()
{
    recorder_.stop();
    store();
    counter_.stop();
    running_hertz_ = 0;
    middle_register_.reset();
    high_register_.reset();
    origin_.reset();
    with_.hardware.set_outside({});
}

void instruments::look(bool begins)
{
    if (begins) begin();
    if (!origin_) return;
    const nanoseconds time = with_.time->now() - *origin_;
    // A part that works has to see each change on the way; it may count them.
    if (with_.hardware.socket().part_has_power()) {
        for (int changes = 0; changes < most_changes && live_.next_change() <= time; ++changes)
            with_.hardware.set_outside(live_.look(live_.next_change()).levels);
    }
    with_.hardware.set_outside(live_.look(time).levels);
}

void instruments::store()
{
    recorder_.store(with_.ram);
    if (const auto reply = recorder_.take_reply()) with_.log.line("-> ibuf1 ", hex_word{{&*reply, 1}});
}

void instruments::take_frame(std::span<const std::uint8_t> frame)
{
    if (frame.size() >= 2 && frame[1] == stop_code) return recorder_.stop();
    if (frame.size() >= start_length && frame[1] == start_code) return start_recording(frame[2], frame[3], frame[4]);
    with_.log.note("an analyzer frame of " + std::to_string(frame.size()) + " bytes that neither starts nor stops");
}

void instruments::start_recording(std::uint8_t mode, std::uint8_t mask, std::uint8_t level)
{
    begin();
    recording_plan plan;
    plan.waits = (mode & 1) != 0;
    plan.mask = mask;
    plan.level = level;
    plan.period = sample_period(with_.model, with_.generation);
    plan.samples = with_.ram.bytes();
    plan.finds_no_trigger = with_.faults.no_trigger;
    plan.reply_is_lost = with_.faults.lost_replies.take();
    plan.last_reply = with_.faults.wrong_reply.value_or(plan.last_reply);
    plan.early_reply = with_.faults.early_reply;
    recorder_.start(plan, watch());
}

void instruments::control(std::uint8_t address, std::uint8_t value)
{
    switch (address) {
    case middle_address: middle_register_ = value; break;
    case high_address: high_register_ = value; break;
    case divider_address:
        // The host's own frame has the upper bytes too, but a programmer without USB does not see that.
        start_generator({value, middle_register_.value_or(with_.replies.ubuf1(2)),
                         high_register_.value_or(with_.replies.ubuf1(3))});
        break;
    case counter_address:
        begin();
        counter_.start(watch(), with_.faults.no_count);
        break;
    default: break;
    }
}

void instruments::start_generator(wave_divider divider)
{
    const wave_loop loop = loop_of(with_.model, middle_register_ && high_register_);
    with_.log.line("-> divider " + std::to_string(divider.high * 65536 + divider.middle * 256 + divider.low));
    origin_.reset();
    running_hertz_ = with_.faults.dead_generator ? 0 : generated_hertz(loop, with_.model, with_.generation, divider);
    last_hertz_ = running_hertz_;
    begin();
    update();
    look_for_conflict();
}

/// A lead from the generator has its own wave.
void instruments::look_for_conflict()
{
    if (running_hertz_ > 0 && (signals_.pins() & pin_23) != 0)
        with_.log.hazard("the generator and a signal both drive P23");
}

std::optional<std::uint8_t> instruments::read_control(std::uint8_t address)
{
    if (!counter_.running() || address < count_address || address >= count_address + count_bytes) return std::nullopt;
    // The first byte keeps the others as they were then.
    if (address == count_address) latched_ = counter_.result();
    return latched_[static_cast<std::size_t>(address - count_address)];
}

}  // namespace tamrix::sim
