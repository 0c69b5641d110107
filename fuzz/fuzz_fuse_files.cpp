// The strict readers of fuse files and SVF files under libFuzzer; FUZZ_VERIFIER, given by the build, is the name of
// one. The first byte of the input is the size of the pieces that the source gives, the rest is the file.
#include "support/piecemeal_source.h"
#include "verify/jedec.h"
#include "verify/jedec_writer.h"
#include "verify/svf.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

namespace {

using namespace tamrix;

using pieces = tests::piecemeal_source;

constexpr std::string_view verifier = FUZZ_VERIFIER;

void expect(bool right)
{
    if (!right) std::abort();
}

bool same_remarks(const verification& one, const verification& other)
{
    return one.remark_count == other.remark_count &&
           std::ranges::equal(one.remarks, other.remarks, {}, &diagnostic::text, &diagnostic::text);
}

/// What is sound is written and read again as it was.
void write_and_read(const jedec_reading& held)
{
    if (held.damaged()) return;
    const std::string text = jedec_file(held.map, 32);
    memory_source from{{reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}};
    const jedec_reading again = verify_jedec(from, "written");
    expect(!again.damaged() && again.map.fuses == held.map.fuses && again.map.vectors == held.map.vectors);
}

void look_at_jedec(pieces whole, pieces piecemeal)
{
    const jedec_reading held = verify_jedec(whole, "file"), other = verify_jedec(piecemeal, "file");
    expect(same_remarks(held, other) && held.map.fuses == other.map.fuses);
    write_and_read(held);
}

void look_at_svf(pieces whole, pieces piecemeal)
{
    const svf_reading held = verify_svf(whole, "file"), other = verify_svf(piecemeal, "file");
    expect(same_remarks(held, other) && held.bits_shifted == other.bits_shifted);
    expect(held.damaged() || held.statements != 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const std::span<const std::uint8_t> file{data + 1, size - 1};
    const auto look = verifier == "jedec" ? look_at_jedec : look_at_svf;
    look(pieces{file, file.size() + 1}, pieces{file, data[0] + std::size_t{1}});
    return 0;
}
