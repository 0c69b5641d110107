#include "verify/findings.h"
#include "verify/verifiers.h"

#include <vector>

namespace tamrix {

/// Nothing in such a file can be wrong but that there is none of it.
verification verify_binary(byte_source& from, const std::string& name, data_taker& data)
{
    constexpr std::size_t block_bytes = 0x40000;
    findings found{name, data};
    std::vector<std::uint8_t> block(block_bytes);
    std::uint64_t at = 0;
    while (const std::size_t count = from.read(block)) {
        found.take(at_offset(at), at, std::span{block}.first(count));
        at += count;
    }
    return found.result();
}

}  // namespace tamrix
