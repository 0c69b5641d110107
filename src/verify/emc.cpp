#include "verify/byte_reader.h"
#include "verify/findings.h"
#include "verify/verifiers.h"

#include "base/arith.h"

namespace tamrix {

/// A count of words, and the words. Nothing protects them but the length of the file.
verification verify_emc(byte_source& from, const std::string& name, data_taker& data)
{
    findings found{name, data};
    byte_reader file{from};
    const auto head = file.next(2);
    if (head.size() < 2) {
        found.remark(at_offset(head.size()), "the end of the file", "a word count of two bytes");
        return found.result();
    }
    const std::size_t expected = 2 * (head[0] + 256u * head[1]);
    const auto words = file.next(expected);
    found.take(at_offset(2), 0, words);
    if (words.size() < expected) {
        found.remark(at_offset(file.at()), "the end of the file",
                     arith::hex(static_cast<std::int64_t>(expected)) + " bytes of data");
    } else {
        file.expect_end(found);
    }
    return found.result();
}

}  // namespace tamrix
