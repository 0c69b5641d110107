#include "selftest/xcinit_LM.h"

#include "base/other_side.h"
#include "channel/module_frames.h"
#include "channel/send.h"
#include "selftest/module_image.h"
#include "session/session.h"

#include <algorithm>
#include <span>
#include <vector>

namespace tamrix {

namespace {

constexpr std::size_t image_block_bytes = 24576;
constexpr int passes = 4;
constexpr std::size_t most_full_blocks = 164;  // their tags fit a byte
constexpr std::uint8_t first_block_tag = 91, block_taken = 170, fpga_runs = 0x55, image_block = 16;
constexpr std::uint8_t fpga_reset = 55, fpga_connection = 51;
constexpr std::uint8_t kept_mode = 0, mode_without_meaning = 3;

class image_load {
public:
    image_load(selftest_frame& form, std::uint8_t fileindex, std::uint8_t mode, std::uint8_t slot)
        : form_{form}, blocks_{form.plug_in().blocks}, fileindex_{fileindex}, mode_{mode}, slot_{slot}
    {}

    /// True once the FPGA runs.
    bool load(std::span<const std::uint8_t> image) const
    {
        for (int pass = 0; pass < passes; ++pass) {
            if (!send(image)) return false;
            if (hw::read_other_side(blocks_.ibuf1(1)) == fpga_runs) return true;
        }
        return false;
    }

    void connect() const
    {
        hw::devobj& device = form_.device();
        device.regout(1, fpga_reset);
        device.delayms(1000);
        device.regout(0, fpga_reset);
        device.delayms(1000);
        device.regout(1, fpga_connection);
        device.delayms(1000);
    }

    void give_up() const
    {
        form_.warn(">> write fig file err!! ");
        form_.device().regout(1, fpga_reset);
        form_.device().regout(0, fpga_reset);
        hw::write_other_side(blocks_.prgresult(0), module_not_loaded);
    }

private:
    /// The last block is the one that is not full, if need be an empty one.
    bool send(std::span<const std::uint8_t> image) const
    {
        const std::size_t full = image.size() / image_block_bytes;
        for (std::size_t block = 0; block <= full; ++block) {
            const auto rest = image.subspan(block * image_block_bytes);
            if (!send_block(block, rest.first(std::min(rest.size(), image_block_bytes)))) return false;
        }
        return true;
    }

    bool announce(hw::module_stage stage) const
    {
        const bool taken = hw::send_module_bulk_frame(form_.plug_in(), {.block = image_block,
                                                                        .direction = hw::bulk_to_ram,
                                                                        .memory = hw::module_memory::image,
                                                                        .stage = stage,
                                                                        .slot = slot_,
                                                                        .length = hw::frame_length::large});
        if (taken) form_.device().delayms(50);
        return taken;
    }

    bool send_block(std::size_t block, std::span<const std::uint8_t> bytes) const
    {
        if (!announce(hw::module_stage::unit)) return false;
        const auto size = static_cast<std::int32_t>(bytes.size());
        if (!write(bytes)) return false;
        if (!announce(hw::module_stage::passing)) return false;
        if (!hw::send_load_step(form_.plug_in(), hw::load_direction::to_module, size)) return false;
        form_.device().replycheck(5);
        hw::write_other_side(blocks_.ibuf1(0), 0);
        hw::write_other_side(blocks_.ibuf1(1), 0);  // what another module has left
        blocks_.ubuf1(2) = fileindex_;
        blocks_.ubuf1(3) = mode_;
        return form_.device().replywait(22, static_cast<std::uint8_t>(first_block_tag + block), 5) &&
               hw::read_other_side(blocks_.ibuf1(0)) == block_taken;
    }

    /// An empty block is written too, unlike by write_blocks.
    bool write(std::span<const std::uint8_t> bytes) const
    {
        const std::int32_t result =
            form_.plug_in().hardware.transport().usbbulkwrite(bytes.data(), static_cast<std::int32_t>(bytes.size()));
        hw::write_other_side(blocks_.prgresult(0), static_cast<std::uint8_t>(result));
        if (result == hw::prgresult_write_failed) return false;
        form_.device().delayms(50);
        return true;
    }

    selftest_frame& form_;
    sharemap& blocks_;
    std::uint8_t fileindex_, mode_, slot_;
};

}  // namespace

void xcinit_LM(selftest_frame& form, std::uint8_t fileindex, std::uint8_t& mode, std::int16_t slot)
{
    if (mode == mode_without_meaning) mode = kept_mode;
    sharemap& blocks = form.plug_in().blocks;
    const auto module = static_cast<std::uint8_t>(slot);
    blocks.ubuf1(hw::slot_byte_of_bulk_frame) = module;
    const std::vector<std::uint8_t> image = read_module_image(form.plug_in(), fileindex);
    const image_load work{form, fileindex, mode, module};
    if (image.empty() || image.size() / image_block_bytes > most_full_blocks) {
        form.warn(">> Read fig file err!!  ");
        hw::write_other_side(blocks.prgresult(0), module_not_loaded);
    } else if (!work.load(image)) {
        return work.give_up();
    }
    // Intentional: without an image too.
    work.connect();
}

}  // namespace tamrix
