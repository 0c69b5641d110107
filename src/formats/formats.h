// The buffer file formats, one record each: the dialogs' options, the command line and the detection are driven from
// this table.
#pragma once

#include "formats/address_range.h"
#include "formats/transfer_job.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tamrix {

/// How sure a detector is; a later value is surer.
enum class detection : std::uint8_t { no, maybe, damaged, mine };

/// What a detector is shown: the start of the file, at most detection_head_bytes of it, and how long the whole file is.
struct file_start {
    std::span<const std::uint8_t> bytes;
    std::int64_t file_length;
};

struct format {
    std::string_view name;        // on the command line
    std::string_view caption;     // of the option; empty where a message supplies it
    int caption_message;          // 0 where `caption` stands
    std::string_view extensions;  // lower case, with blanks between
    detection (*detect)(const file_start& file);
    transfer_routine read;
    transfer_routine write;  // null where this format cannot be saved
    /// The addresses that the whole file fills, so that a buffer can be sized by it; none where it fills none. Throws
    /// file_error. Null with `read`.
    std::optional<address_range> (*measure)(const std::string& path);
    /// The same by the start and the end of a long file alone, so it may be wrong; none where they do not tell, or
    /// where the file is short. Null where only the whole file can tell.
    std::optional<address_range> (*estimate)(const std::string& path) = nullptr;
    /// Bytes that one file address stands for, as in the load dialog's From File Address.
    int address_bytes = 1;
};

inline constexpr std::size_t detection_head_bytes = 65536;

/// All load formats by option index; the first four are the save formats.
std::span<const format, 8> formats();
inline constexpr int save_format_count = 4;

/// The caption of the format's option in the host's language.
std::string caption_of(const format& which, const session& plug_in);

/// True where the file's name ends with one of the format's extensions.
bool has_extension(const format& which, const std::string& path);

/// What detection found: the option index and how sure it is.
struct detected_format {
    int index;
    detection certainty;
};

/// The format of a file by its content; the surest detector wins. On a tie the file's extension decides, then the lower
/// index. Throws file_error.
detected_format detect_format(const std::string& path);

}  // namespace tamrix
