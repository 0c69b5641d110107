// Strict reading under libFuzzer. The first byte of the input names the format, the second how many bytes the source
// gives at a time; the rest is the file.
#include "support/piecemeal_source.h"
#include "verify/verification.h"

#include <array>
#include <cstdlib>
#include <string_view>

namespace {

using namespace tamrix;

constexpr std::array<std::string_view, 8> names{"binary", "intel", "motorola", "tektronix",
                                                "holtek", "emc",   "intel16",  "texas"};

struct counter final : data_taker {
    std::uint64_t bytes = 0;
    unsigned sum = 0;
    void take(std::uint64_t, std::span<const std::uint8_t> taken) override
    {
        if (taken.empty()) std::abort();
        for (const std::uint8_t byte : taken) sum += byte;
        bytes += taken.size();
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) return 0;
    const verify_routine routine = verifier_of(names[data[0] % names.size()]);
    const std::span file{data + 2, size - 2};
    counter pieces, whole;
    tests::piecemeal_source slow{file, data[1] + std::size_t{1}};
    memory_source fast{file};
    const verification first = routine(slow, "f", pieces), second = routine(fast, "f", whole);
    if (first.remark_count != second.remark_count || pieces.sum != whole.sum) std::abort();
    if (first.record_bytes != pieces.bytes || second.record_bytes != whole.bytes) std::abort();
    if (first.segments.bytes() > first.record_bytes) std::abort();
    for (const diagnostic& remark : first.remarks) {
        if (remark.text().empty()) std::abort();
    }
    return 0;
}
