#include "verify/findings.h"
#include "verify/verifiers.h"

#include <vector>

namespace tamrix {

/// Nothing in such a file can be wrong but that there is none of it.
verification verify_binary(byte_source& from, const std::string& name, data_taker& data)
{
    constexpr std::size_t room_bytes = 0x40000;
    findings found{name, data};
    std::vector<std::uint8_t> room(room_bytes);
    std::uint64_t at = 0;
    for (auto block = from.lend(room); !block.empty(); block = from.lend(room)) {
        found.take(at_offset(at), at, block);
        at += block.size();
    }
    return found.result();
}

}  // namespace tamrix
