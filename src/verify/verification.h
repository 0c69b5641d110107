// What a strict reading of a file finds. The load dialogs take what they can; this says whether the file is what its
// format's own rules ask for, and what it holds.
#pragma once

#include "base/diagnostic.h"
#include "files/byte_source.h"
#include "image/segments.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix {

struct verification {
    static constexpr std::size_t most_kept = 100;

    std::vector<diagnostic> remarks{};  // in the order of the file, the first `most_kept` of them
    std::uint64_t remark_count = 0;     // all
    segment_list segments{};
    std::uint64_t record_bytes = 0;                // of data; more than the segments have where records overlap
    std::optional<std::uint64_t> start_address{};  // of the program, in bytes; of CS and IP, what they make together
    std::string header{};                          // the text of a header record

    bool damaged() const { return remark_count != 0; }
    void add(diagnostic remark)
    {
        if (++remark_count <= most_kept) remarks.push_back(std::move(remark));
    }
};

/// Reads `from` to its end. `name` is the file's in the remarks. Data go to `data` in the order of the file, also those
/// of a record whose checksum is wrong, as long as they can be read. Throws file_error where the source cannot be read,
/// and whatever `data` throws.
using verify_routine = verification (*)(byte_source& from, const std::string& name, data_taker& data);

/// The one of a buffer format, by its name on the command line: binary, intel, motorola, tektronix, holtek, emc,
/// intel16, texas. Null for any other name. The second segment of a holtek file has no address without a device; its
/// data are said to be at the next multiple of 256 after the first.
verify_routine verifier_of(std::string_view format);

}  // namespace tamrix
