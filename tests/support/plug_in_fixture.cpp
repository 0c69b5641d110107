#include "support/plug_in_fixture.h"

#include <algorithm>

namespace tamrix::tests {

plug_in_fixture::plug_in_fixture(const device& chosen)
{
    auto& blocks = session.blocks;
    blocks.attachsmall(1);
    blocks.buflength(0) = chosen.buflength;
    blocks.tlength(0) = chosen.tlength;
    blocks.wordmode(0) = chosen.wordmode;
    blocks.wordmode(1) = chosen.spare_units;
    blocks.typeformat(0) = chosen.family;
    blocks.typeformat(1) = chosen.clear;
    blocks.wcompany(0) = chosen.maker;
    blocks.attachbig(ibuffer_bytes(chosen.buflength));
    // A large buffer stays as the system gives it; filling it would only cost memory.
    if (chosen.buflength <= 0x1000000) std::ranges::fill(blocks.ibuffer.span(), untouched);
}

std::vector<std::uint8_t> plug_in_fixture::bytes(std::int64_t first, std::int64_t count)
{
    const auto view =
        session.blocks.ibuffer.span().subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
    return {view.begin(), view.end()};
}

bool plug_in_fixture::buffer_untouched()
{
    return std::ranges::all_of(session.blocks.ibuffer.span(), [](std::uint8_t byte) { return byte == untouched; });
}

}  // namespace tamrix::tests
