// What the readers and writers of the formats share. Used by this folder only.
#pragma once

#include "capture/capture_files.h"

namespace tamrix::capture {

/// A fault of a file at a line, counted from 1; 0: of the file as a whole.
[[noreturn]] void fail_at(const std::string& path, std::uint64_t line, std::string found, std::string expected = {});

/// Which channels of a file are taken: for each, its place in the file.
struct channel_choice {
    std::vector<std::size_t> taken;
    std::vector<std::string> names, left_out;
};
/// Throws file_error where a chosen channel is missing, or there are none or too many.
channel_choice choose_channels(const std::string& path, const std::vector<std::string>& names,
                               const reading_options& options);

inline constexpr std::size_t most_file_channels = 1024;

std::unique_ptr<sample_source> open_raw(const std::string& path, const reading_options& options);
std::unique_ptr<sample_source> open_vcd(const std::string& path, const reading_options& options);
std::unique_ptr<sample_source> open_csv(const std::string& path, const reading_options& options);
std::unique_ptr<sample_source> open_sr(const std::string& path, const reading_options& options);

/// Write all that the source gives. The period is there.
void write_vcd(sample_source& from, byte_target& to);
void write_csv(sample_source& from, byte_target& to);
/// The archive is in memory, packed, until it is whole. `path` is for diagnostics.
void write_sr(sample_source& from, byte_target& to, const std::string& path);

/// Samples are moved in pieces of so many.
inline constexpr std::size_t piece_samples = 1 << 18;

}  // namespace tamrix::capture
