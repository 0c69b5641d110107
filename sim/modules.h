// The modules of a programmer that has four of them, and the unit's side of what passes between it and them.
#pragma once

#include "sim/module.h"
#include "sim/reply_pipe.h"

#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tamrix::sim {

/// A frame that addresses a module names it for the registers and drivers that the device object switches. A pin frame
/// that addresses none names the unit itself, and so does a reset.
class modules {
public:
    static constexpr int count = 4;
    /// True for models 39, 52 and 54. On all others nothing here takes anything.
    static bool belong_to(int model);

    modules(int model, fault_set& faults, journal& log, memory& ram_of_unit, reply_pipe& replies);

    /// All as after switching on, but for the memories.
    void reset();

    /// Call this first for each frame: what a frame announces to a load step holds for the very next frame.
    void begin_frame(std::uint8_t command);
    /// A module that a pin frame addresses; 0 is the unit.
    void name(int slot);
    /// 0: the unit.
    int named() const { return named_; }
    /// The named module's drivers; null while nothing reaches them.
    machine* reachable();
    /// True if the write was one to the named module's FPGA.
    bool write_control(std::uint8_t address, std::uint8_t value);

    /// Module reset, module start, module signal, load step. False for any other frame.
    bool take_frame(std::span<const std::uint8_t> frame);
    /// A bulk frame between unit and module, or one that announces the block of an image. False for one about the
    /// unit's own memory, which ends what is open here.
    bool take_bulk_frame(std::span<const std::uint8_t> frame);
    /// Takes written bytes for an image or for open passages; returns those that are left for the unit's memory.
    std::span<const std::uint8_t> take_data(std::span<const std::uint8_t> data);
    /// Somebody waits for what became of a block of an image, asked for as 91 + block.
    void answer_load(std::uint8_t tag);

    /// Throws std::invalid_argument if there is no such module or the part does not fit.
    void insert(std::unique_ptr<part> what, int slot);
    bool part_has_power(int slot);
    void update();
    void settle_down();
    void check_idle();

private:
    struct step {
        int slot, block;
        bool image, to_module;
    };
    struct passage {
        int slot, block;
        std::size_t size, left;
    };
    module* at(int slot);
    void control(std::span<const std::uint8_t> frame);
    void load_step(std::span<const std::uint8_t> frame);
    bool carry_out(const step& what, std::size_t bytes);
    bool fetch(module& from, int block, std::size_t bytes);
    void close();

    journal& log_;
    memory& ram_of_unit_;
    reply_pipe& replies_;
    std::vector<std::unique_ptr<module>> all_;
    int named_ = 0;
    std::optional<step> announced_;
    int loaded_ = 0;  // the module of the last load step with an image
    std::deque<passage> passages_;
    bool staging_ = false;
    std::vector<std::uint8_t> staged_;
};

}  // namespace tamrix::sim
