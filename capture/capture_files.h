// Captures as files: read and written a piece at a time, so that their length needs no memory.
#pragma once

#include "capture/recording.h"
#include "files/byte_target.h"
#include "files/file_io.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::capture {

enum class file_format : std::uint8_t { raw, vcd, csv, sr };

/// By its word: "raw", "vcd", "csv", "sr". None for another word.
std::optional<file_format> format_of_word(std::string_view word);
/// By extension, else by content; raw where neither says anything. `head` is what the file begins with.
file_format format_of_file(std::string_view path, std::span<const std::uint8_t> head);

/// The samples of a capture, one after the other.
class sample_source {
public:
    virtual ~sample_source() = default;
    const capture_head& head() const { return head_; }
    /// Names of further channels of the file, which are not taken.
    const std::vector<std::string>& left_out() const { return left_out_; }
    /// Lines for a log, each about something that the samples do not show; complete after the last sample.
    const std::vector<std::string>& remarks() const { return remarks_; }
    /// The next samples; fewer than asked for, or none, only at the end. Throws file_error.
    virtual std::size_t read(std::span<std::uint8_t> target) = 0;
    /// How much of the file was read, 0 to 1.
    virtual double share() const = 0;

protected:
    capture_head head_;
    std::vector<std::string> left_out_, remarks_;
};

/// The samples of a capture in memory, which has to outlive it, from `first` on, at most `count`.
std::unique_ptr<sample_source> source_of(const recording& capture, std::size_t first = 0,
                                         std::size_t count = ~std::size_t{0});

struct reading_options {
    std::vector<std::string> channels;    // those to take, by the file's names, at most 8; empty: the first 8
    std::optional<sample_period> period;  // in place of what the file says
    std::vector<std::string> names;       // in place of the file's, in the order of the channels that are taken
};

/// Throws file_error where it cannot be read, is damaged in its head, or has more than 1024 channels.
std::unique_ptr<sample_source> open_capture(const std::string& path, file_format format,
                                            const reading_options& options = {});

/// Called every 2^20 samples or sooner with the share that is done, 0 to 1; false stops the work. May be empty.
using on_progress = std::function<bool(double share)>;
/// The work was stopped by its on_progress.
class stopped : public std::runtime_error {
public:
    stopped() : std::runtime_error{"stopped"} {}
};

/// The file has its old content, or none, until the new one is whole, also when the work is stopped or fails. Throws
/// file_error and stopped. All formats but raw need a period.
void write_capture(sample_source& from, const std::string& path, file_format format, const on_progress& progress = {});

/// Throws file_error, stopped, and file_error where there are more than `most` samples.
recording load_capture(sample_source& from, const on_progress& progress = {}, std::uint64_t most = 1 << 30);

}  // namespace tamrix::capture
