// The binary format: the file is the buffer, byte for byte.
#pragma once

#include "formats/formats.h"

namespace tamrix {

/// The length at which a device's image no longer fits the mapping and goes through "tmpbuf.bin", and the size of one
/// part.
inline constexpr std::int64_t large_image_bytes = 0x10800000;
inline constexpr std::int64_t large_chunk_bytes = 0x8400000;

detection detect_binary(const file_start& file);
std::optional<address_range> measure_binary(const std::string& path);
status read_binary(transfer_job& job);
status write_binary(transfer_job& job);

/// The load of an image that does not fit the mapping; read_binary chooses it.
status read_binary_large(transfer_job& job);

/// The bytes that a load with byte selection takes: what the file offers, at most what the device and `loadlength`
/// leave. Then adds the phases to the two start addresses.
std::int64_t selected_bytes(transfer_job& job, std::int64_t file_length);
/// Says to the user that the start is beyond the end of the file.
status reject_file_address(transfer_job& job);

}  // namespace tamrix
