// Attaches the 62 shared blocks and gives every other module a typed view of each, named after its block.
#pragma once

#include "blocks/block.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace tamrix {

class sharemap {
public:
    /// `name_space` is put before every object name; `on_failure` is called once for each block that can be neither
    /// opened nor created.
    sharemap(std::string name_space, std::function<void()> on_failure);

    /// Attaches the small blocks of instance `num` in table order. A block that fails does not stop the later ones.
    void attachsmall(std::int16_t num);
    /// Attaches `ibuffer` with `size` bytes, then `ibuffer66`.
    void attachbig(std::int32_t size);
    /// Releases `ibuffer`, then `ibuffer66`.
    void releasebig();
    /// The small blocks in attach order.
    std::array<block_base*, 60> small();

#define TAMRIX_VIEW(name, mapped_bytes, kind, count) view_of<element::kind> name{block_line(block_name(#name))};
    TAMRIX_SMALL_BLOCKS(TAMRIX_VIEW)
    TAMRIX_BIG_BLOCKS(TAMRIX_VIEW)
#undef TAMRIX_VIEW

private:
    void attach(block_base& view, const std::string& object, std::int32_t mapped_bytes, std::uint32_t count);

    std::string name_space_;
    std::function<void()> on_failure_;
};

}  // namespace tamrix
