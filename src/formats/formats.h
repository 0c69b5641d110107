// The buffer file formats, one record each. This table drives the dialogs' options, the command line and the detection.
#pragma once

#include "formats/address_range.h"
#include "formats/transfer_job.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix {

/// How sure a detector is; a later value is surer.
enum class detection : std::uint8_t { no, maybe, damaged, mine };

/// What a detector receives: the start of the file, at most detection_head_bytes, and the length of the whole file.
struct file_start {
    std::span<const std::uint8_t> bytes;
    std::int64_t file_length;
};

struct format {
    std::string_view name;        // on the command line
    std::string_view caption;     // of the option; empty if a message supplies it
    int caption_message;          // 0 if `caption` is used
    std::string_view extensions;  // lower case, separated by blanks
    detection (*detect)(const file_start& file);
    transfer_routine read;
    transfer_routine write;  // null if this format cannot be saved
    /// The addresses that the whole file fills, to size a buffer; none if it fills none. Throws file_error. Null if
    /// `read` is.
    std::optional<address_range> (*measure)(const std::string& path);
    /// The same from only the start and the end of a long file, so it may be wrong; none if they are not enough, or if
    /// the file is short. Null if the format needs the whole file.
    std::optional<address_range> (*estimate)(const std::string& path) = nullptr;
    /// Bytes of one file address, as in the load dialog's From File Address.
    int address_bytes = 1;
};

inline constexpr std::size_t detection_head_bytes = 65536;

/// All formats by option index of the load dialog.
std::span<const format> formats();

/// Those of `all` that can be saved, by option index of the save dialog.
std::vector<const format*> save_formats(std::span<const format> all = formats());

/// The caption of the format's option in the host's language.
std::string caption_of(const format& which, const session& plug_in);

/// True if the file's name ends with one of the format's extensions.
bool has_extension(const format& which, const std::string& path);

/// What detection found: the option index and how sure it is.
struct detected_format {
    int index;
    detection certainty;
};

/// The format of a file by its content; the surest detector wins. On a tie the file's extension decides, then the lower
/// index. Throws file_error.
detected_format detect_format(const std::string& path);
/// The same of what is at hand; only the extension of `path` counts.
detected_format detect_format(const file_start& file, const std::string& path);

}  // namespace tamrix
