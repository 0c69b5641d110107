// A programmer made of software, with a socket, faults that can be switched on, and a journal.
#pragma once

#include "programmer/programmer.h"
#include "sim/device.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tamrix::sim {

struct setup {
    int model = 40;
    int generation = 0;                  // of the hardware; 17 differs below model 40
    int memory_banks = 0;                // of 32768 bytes, at most 16; 0: the memory that the model has
    std::shared_ptr<sim::clock> time{};  // none: a virtual clock of its own
    std::shared_ptr<journal> log{};      // none: one of its own. It must run on `time`
    microseconds read_time{3};           // how long a read of a register takes
    part_shelf chips{};                  // for signals like "chip 7490 ..."; none: such signals are refused
};

/// All calls come from one thread. Only bulk reads arrive in the clock's context.
class programmer final : public hw::programmer {
public:
    explicit programmer(const setup& wanted, reply_place replies = {});
    /// Everything still on is then a hazard in the journal.
    ~programmer() override;
    programmer(const programmer&) = delete;
    programmer& operator=(const programmer&) = delete;

    hw::lumbat& transport() override { return transport_; }
    hw::devobj& device() override { return device_; }

    /// `module`: 0 for the unit's own socket, else the number of a module. Null empties the socket. Throws
    /// std::invalid_argument if the part does not fit or there is no such module.
    void insert(std::unique_ptr<part> what, int module = 0);
    bool part_has_power(int module = 0);
    /// By name, see add_fault() in faults.h. Throws fault_error.
    void add_fault(std::string_view text);
    /// Many at once, which is quicker. Where one is wrong, none counts.
    void add_faults(std::span<const std::string> texts);
    void clear_faults();
    /// By a line of text, see signal_set::add(). Throws signal_error.
    void add_signal(std::string_view text);
    void clear_signals() { set_signals(no_signals()); }
    /// All at once, and a set without any, to which signals can be added.
    const signal_set& signals() const { return shared_.tools.signals(); }
    void set_signals(signal_set wanted) { shared_.tools.set_signals(std::move(wanted)); }
    signal_set no_signals() const { return signal_set{chips_}; }
    /// Reports each voltage and supply driver that is still on as a hazard.
    void check_idle();

    sim::clock& time() { return *shared_.time; }
    journal& log() { return *shared_.log; }

private:
    part_shelf chips_;
    parts_of_programmer shared_;
    sim::transport transport_{shared_};
    sim::device device_;
};

/// The source of a session's door. `prepare` receives each new programmer: to put a part into its socket, or to keep a
/// pointer to it.
hw::programmer_source source_of(setup wanted, std::function<void(programmer&)> prepare = {});

}  // namespace tamrix::sim
