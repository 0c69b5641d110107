#include "sim/device.h"

#include <algorithm>
#include <optional>

namespace tamrix::sim {

namespace {

constexpr std::int32_t answered = 0, silent = 1, no_board = 2, read_failed = -1;
/// What a read finds where no module answers: the bus is pulled up.
constexpr std::int32_t nobody = 255;
/// The first argument of a wait for what became of a block of an image.
constexpr std::uint8_t load_answer = 22;
/// A reply takes the one, a reply that does not come is waited for the other.
constexpr microseconds reply_time{1000}, reply_limit{1'000'000};

/// The control address says which driver; it is turned at pin n by the value n + 128.
constexpr std::uint8_t driver_values = 128;

std::optional<driver_kind> driver_of(std::uint8_t address)
{
    switch (address) {
    case 135: return driver_kind::vpp;
    case 137: return driver_kind::vcc;
    case 138: return driver_kind::ground;
    default: return std::nullopt;
    }
}

std::uint8_t byte_of(std::int32_t value) { return static_cast<std::uint8_t>(value & 0xFF); }

}  // namespace

void device::pass(microseconds time)
{
    shared_.settle_down();
    shared_.time->advance(time);
}

void device::setvcc(std::int32_t millivolts)
{
    line("setvcc ", millivolts);
    if (machine* const there = shared_.reached()) there->set_vcc(millivolts);
}

void device::setvpp(std::int32_t millivolts, std::uint8_t channel)
{
    line("setvpp ", millivolts, ' ', channel);
    if (machine* const there = shared_.reached()) there->set_vpp(millivolts, channel);
}

void device::gndpin(std::uint8_t pin, std::uint8_t state)
{
    line("gndpin ", pin, ' ', state);
    if (machine* const there = shared_.reached()) there->ground(pin, state != 0);
}

void device::vccpin(std::uint8_t pin, std::uint8_t state)
{
    line("vccpin ", pin, ' ', state);
    if (machine* const there = shared_.reached()) there->vcc(pin, state != 0);
}

void device::vpppin(std::uint8_t pin, std::uint8_t state)
{
    line("vpppin ", pin, ' ', state);
    if (machine* const there = shared_.reached()) there->vpp(pin, state != 0);
}

void device::busmode(std::int32_t mode)
{
    line("busmode ", mode);
    shared_.hardware.set_bus_mode(mode);
}

void device::hwinit() { line("hwinit"); }

void device::drop_all()
{
    usb_.reset();
    control_registers_.fill(0);
    shared_.hardware.reset();
    shared_.slots.reset();
}

std::int32_t device::hwreset()
{
    const bool lost = shared_.faults.no_answer;
    line(lost ? "hwreset -> 1" : "hwreset");
    if (!lost) drop_all();
    return lost ? silent : answered;
}

std::int32_t device::ctlout(std::int32_t value, std::uint8_t address)
{
    line("ctlout ", value, " -> ", address);
    if (shared_.faults.no_answer) return silent;
    const auto driver = driver_of(address);
    machine* const there = shared_.reached();
    if (driver && value > driver_values && value <= 255 && there != nullptr && there->tests_drivers()) {
        there->toggle_driver(*driver, byte_of(value - driver_values));
    } else {
        control_registers_[address] = byte_of(value);
        shared_.tools.control(address, byte_of(value));
    }
    answer_with_pins();
    return answered;
}

std::int32_t device::ctlin(std::uint8_t address)
{
    const std::int32_t held = shared_.tools.read_control(address).value_or(control_registers_[address]);
    const std::int32_t value = shared_.faults.no_answer ? read_failed : held;
    line("ctlin ", address, ": ", value);
    return value;
}

void device::regout(std::int32_t value, std::uint8_t address)
{
    line("regout ", value, " -> ", address);
    if (shared_.faults.no_answer) return;
    machine* const there = shared_.reached();
    if (!shared_.slots.write_control(address, byte_of(value)) && there != nullptr)
        there->write_register(address, byte_of(value));
    answer_with_pins();
}

std::int32_t device::regin(std::uint8_t address)
{
    shared_.time->advance(read_time_);
    shared_.tools.look(true);
    machine* const there = shared_.faults.no_answer ? nullptr : shared_.reached();
    const std::int32_t silence = shared_.faults.no_answer ? read_failed : nobody;
    const std::int32_t value = there == nullptr ? silence : there->read_register(address);
    line("regin ", address, ": ", value);
    return value;
}

void device::delayms(std::int32_t milliseconds)
{
    line("delayms ", milliseconds);
    pass(std::chrono::milliseconds{std::max(milliseconds, 0)});
    if (milliseconds > 0) shared_.replies.let_arrive();
}

void device::delayus(std::int32_t count)
{
    line("delayus ", count);
    pass(microseconds{std::max(count, 0)});
}

/// The hardware reads the pins back after each access; only who waits for it takes the answer.
void device::answer_with_pins()
{
    const machine* const there = shared_.reached();
    if (there == nullptr) return shared_.replies.clear();
    shared_.tools.look(false);
    const auto levels = there->read_ports();
    shared_.replies.send({levels.begin(), levels.end()}, false);
}

bool device::receive()
{
    const bool came = shared_.replies.receive();
    pass(came ? reply_time : reply_limit);
    return came;
}

bool device::replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra)
{
    line("replywait ", count, ' ', mode, ' ', extra);
    if (count == load_answer) shared_.slots.answer_load(mode);
    const bool came = receive();
    if (!came) line("-> false");
    return came;
}

void device::replycheck(std::int32_t count)
{
    line("replycheck ", count);
    if (!receive()) line("-> nothing came");
}

void device::enter(script::act_kind kind, std::int32_t value, std::uint8_t address)
{
    if (!shared_.vectors.enter({kind, value, address})) shared_.log->note("the script is full");
}

void device::vecout(std::int32_t value, std::uint8_t address)
{
    line("vecout ", value, " -> ", address);
    enter(script::act_kind::out, value, address);
}

void device::vecstart()
{
    line("vecstart");
    if (shared_.faults.no_answer) return;
    shared_.tools.look(true);
    const microseconds begin = std::max(shared_.time->now(), shared_.script_done);
    shared_.script_done = begin + shared_.vectors.start(shared_.hardware);
}

void device::vecbyte(std::uint8_t address)
{
    line("vecbyte ", address);
    enter(script::act_kind::read, 0, address);
}

void device::vecdelay(std::int32_t count)
{
    line("vecdelay ", count);
    enter(script::act_kind::wait, count, 0);
}

void device::vecdelay2(std::int32_t count)
{
    line("vecdelay2 ", count);
    const std::int32_t longest = 1'000'000;  // milliseconds
    enter(script::act_kind::wait, std::clamp(count, 0, longest) * 1000, 0);
}

void device::vecgnd(std::uint8_t pin, std::uint8_t state)
{
    line("vecgnd ", pin, ' ', state);
    enter(script::act_kind::ground, state, pin);
}

void device::vecvcc(std::uint8_t pin, std::uint8_t state)
{
    line("vecvcc ", pin, ' ', state);
    enter(script::act_kind::vcc, state, pin);
}

void device::vecvpp(std::uint8_t pin, std::uint8_t state)
{
    line("vecvpp ", pin, ' ', state);
    enter(script::act_kind::vpp, state, pin);
}

void device::hwrelease()
{
    line("hwrelease");
    drop_all();
}

void device::hwfault() { line("hwfault"); }

std::int32_t device::boardsel(std::uint8_t code)
{
    line("boardsel ", code);
    if (shared_.faults.no_answer) return no_board;
    shared_.hardware.select_board(code);
    return answered;
}

void device::boardsel2(std::uint8_t first, std::uint8_t second)
{
    line("boardsel2 ", first, ' ', second);
    if (!shared_.faults.no_answer) shared_.hardware.select_board(first, second);
}

}  // namespace tamrix::sim
