// The reader of emergency copies under libFuzzer: the input is a file, and also the records of one whose sum is right.
#include "editing/closed_copy.h"

#include <cstdlib>

using namespace tamrix;

namespace {

void read_file(std::span<const std::uint8_t> file)
{
    const auto last = editing::find_commit(file);
    // A length that a file of a few bytes may well have, but that takes the fuzzer too long.
    if (!last || last->state.length > 1'000'000) return;
    if (last->end > file.size() || editing::bytes_of(*last, file).size() != last->state.length) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span input{data, size};
    read_file(input);
    read_file(tests::closed_copy(input, {"device", "file", 100, 5000}));
    return 0;
}
