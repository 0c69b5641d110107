#include "verify/byte_reader.h"
#include "verify/findings.h"
#include "verify/verifiers.h"

#include "base/arith.h"

namespace tamrix {

/// A count of words, and the words. Nothing protects them but the length of the file.
verification verify_emc(byte_source& from, const std::string& name, data_taker& data)
{
    constexpr std::size_t head_bytes = 2;
    findings found{name, data};
    byte_reader file{from};
    const auto head = file.next(head_bytes);
    if (head.size() < head_bytes) {
        found.remark(at_offset(head.size()), "the end of the file", "a word count of two bytes");
        return found.result();
    }
    const std::size_t expected = 2 * (head[0] + 256u * head[1]);
    const auto words = file.next(expected);
    found.take(at_offset(head_bytes), 0, words);
    if (words.size() < expected) {
        found.remark(at_offset(file.at()), "the end of the file",
                     "data up to " + arith::hex(static_cast<std::int64_t>(head_bytes + expected)));
    } else {
        file.expect_end(found);
    }
    return found.result();
}

}  // namespace tamrix
