// A programmer with modules on the bench, and what a host sends to them.
#pragma once

#include "sim/bench.h"

namespace tamrix::tests {

using bytes = std::vector<std::uint8_t>;

struct module_bench : bench {
    explicit module_bench(int its_model = 52) : bench{its_model} {}

    void reset(std::uint8_t slot);
    void start(std::uint8_t slot);
    /// A bulk frame of 16 bytes; `mark` 170 addresses the module, `kind` 3 an image.
    void bulk(std::uint8_t block, std::uint8_t direction, std::uint8_t kind, std::uint8_t mark, std::uint8_t slot);
    /// True if it was acknowledged with 0.
    bool load_step(std::uint8_t from_module, std::uint32_t size);
    std::int32_t write(const bytes& data);
    /// A block of the unit's memory; empty if it did not come.
    bytes read_block(std::size_t size = 32768);

    /// Drives all ports of a module alike; true if it answered, with the pins in `ibuf1`.
    bool pins(std::uint8_t slot, std::uint8_t data, std::uint8_t masks);
    /// True if all six ports came back as this byte.
    bool all_ports(std::uint8_t byte) const;
    /// The level of all released inputs, read as a pin test reads them; -1 where they differ or nobody answers.
    int inputs(std::uint8_t slot, int level);

    /// One block of an image up to the answer; true if the module took it. Byte 1 of `ibuf1` then says more.
    bool load_block(std::uint8_t slot, const bytes& block, std::uint8_t number);
    /// One pass over a whole image. True if the FPGA runs then.
    bool load_image(std::uint8_t slot, std::size_t size);
    /// What a host does once an image runs.
    void connect();

    /// Opens a passage to the module for a block of its memory.
    bool open_passage(std::uint8_t slot, std::uint8_t block, std::uint32_t size = 65536);
    /// A block of the module's memory; empty if the module does not answer.
    bytes fetch(std::uint8_t slot, std::uint8_t block);
    /// The memory test of a module; returns the numbers of its bad blocks.
    std::vector<int> bad_blocks(std::uint8_t slot, const bytes& data);
};

/// For a memory test: a byte and all that modules and unit hold.
bytes random_memory(unsigned seed);

}  // namespace tamrix::tests
