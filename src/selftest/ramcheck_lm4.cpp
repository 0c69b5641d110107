#include "selftest/ramcheck_lm4.h"

#include "channel/bulk_read.h"
#include "channel/bulk_write.h"
#include "channel/module_frames.h"
#include "selftest/ram_test.h"
#include "session/session.h"

#include <span>
#include <string>
#include <vector>

namespace tamrix {

namespace {

constexpr std::int32_t write_bytes = 65536;
constexpr int writes = 8;
constexpr std::size_t module_bytes = std::size_t{writes} * write_bytes;

class module_ram_test {
public:
    module_ram_test(selftest_frame& form, std::int16_t slot)
        : form_{form}, slot_{static_cast<std::uint8_t>(slot)}, bytes_{random_bytes(form, module_bytes)}
    {
        bytes_.insert(bytes_.begin(), 0);
    }

    /// The second writing is the one that the modules keep. It begins one byte later.
    bool write()
    {
        const std::span<const std::uint8_t> all = bytes_;
        return announce(0, hw::bulk_to_ram, hw::module_stage::unit) && wait(100) && fill(all.first(module_bytes)) &&
               open_passages() && fill(all.subspan(1));
    }

    int count_good_blocks()
    {
        int good = 0;
        for (int block = 0; block < blocks_of_module_ram && !form_.closed(); ++block) {
            if (!read(static_cast<std::uint8_t>(block))) {
                form_.add(selftest_fault{.stage = selftest_stage::ram, .place = block, .slot = slot_});
                break;
            }
            const std::span<const std::uint8_t> expected{&bytes_[1 + std::size_t{ram_block_bytes} * block],
                                                         ram_block_bytes};
            if (block_is_good(form_, block, expected, slot_)) ++good;
        }
        return good;
    }

private:
    bool announce(std::uint8_t block, std::uint8_t direction, hw::module_stage stage,
                  hw::frame_length length = hw::frame_length::self_test_pins)
    {
        return hw::send_module_bulk_frame(form_.plug_in(), {.block = block,
                                                            .direction = direction,
                                                            .memory = hw::module_memory::ram,
                                                            .stage = stage,
                                                            .slot = slot_,
                                                            .length = length});
    }
    bool wait(std::int32_t milliseconds)
    {
        form_.device().delayms(milliseconds);
        return !form_.closed();
    }
    bool fill(std::span<const std::uint8_t> bytes)
    {
        return hw::write_blocks(form_.plug_in(), bytes, write_bytes, 100);
    }
    bool step(hw::load_direction direction, std::int32_t bytes, const std::string& words, int number)
    {
        if (!hw::send_load_step(form_.plug_in(), direction, bytes)) return false;
        form_.status(words + std::to_string(number) + "  ", 2);
        form_.device().replycheck(5);
        return true;
    }

    bool open_passages()
    {
        for (int pass = 0; pass < writes; ++pass) {
            const auto block = static_cast<std::uint8_t>(2 * pass);
            if (!announce(block, hw::bulk_to_ram, hw::module_stage::passing) || !wait(500)) return false;
            if (!step(hw::load_direction::to_module, write_bytes, "Pass data to the programmer ......", pass))
                return false;
            if (!wait(1000)) return false;
        }
        return true;
    }

    bool read(std::uint8_t block)
    {
        if (!announce(block, hw::bulk_from_ram, hw::module_stage::passing) || !wait(50)) return false;
        if (!step(hw::load_direction::from_module, ram_block_bytes, "Data is read from the programmer......", block))
            return false;
        const auto target = hw::in_ibuf2(form_.plug_in(), ram_block_bytes + 1);
        return announce(block, hw::bulk_from_ram, hw::module_stage::unit, hw::frame_length::large) &&
               hw::await_block(form_.plug_in(),
                               {.target = target, .limit_ms = hw::bulk_read_limit_ms, .end = hw::block_end::marker});
    }

    selftest_frame& form_;
    std::uint8_t slot_;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace

int ramcheck_lm4(selftest_frame& form, std::int16_t slot)
{
    module_ram_test test{form, slot};
    const bool written = test.write();
    if (!written && !form.closed())
        form.add(selftest_fault{.stage = selftest_stage::ram, .slot = static_cast<std::uint8_t>(slot)});
    const int good = written ? test.count_good_blocks() : 0;
    hw::end_bulk(form.plug_in(), hw::frame_length::large);
    return good;
}

}  // namespace tamrix
