// Files for the readers and writers: opened by the host's path, read and written at offsets; a failure has a
// diagnostic.
#pragma once

#include "base/diagnostic.h"
#include "files/byte_target.h"
#include "files/memory_block.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

namespace tamrix {

/// A file that could not be opened, read or written.
class file_error : public std::runtime_error {
public:
    explicit file_error(diagnostic why);
    /// What the system could not do with the file, by its error number.
    file_error(const std::string& path, int error);
    const diagnostic& why() const { return why_; }

private:
    diagnostic why_;
};

/// A regular file open for reading. All members throw file_error.
class input_file {
public:
    explicit input_file(const std::string& path);
    ~input_file();
    input_file(const input_file&) = delete;
    input_file& operator=(const input_file&) = delete;

    /// Length in bytes when it was opened.
    std::int64_t length() const { return length_; }
    /// Reads from `offset` on until `target` is full or the file ends; returns the number of bytes read.
    std::size_t read_at(std::int64_t offset, std::span<std::uint8_t> target);
    /// As read_at; bytes beyond the end of the file read as 0.
    void read_zero_padded(std::int64_t offset, std::span<std::uint8_t> target);

private:
    std::string path_;
    int file_;
    std::int64_t length_ = 0;
};

/// A file open for writing. All members but the destructor throw file_error.
class output_file final : public byte_target {
public:
    /// Creates the file empty, or empties it.
    explicit output_file(const std::string& path);
    ~output_file() override;
    output_file(const output_file&) = delete;
    output_file& operator=(const output_file&) = delete;

    /// Appends to what was written last.
    void write(std::span<const std::uint8_t> bytes) override;
    void write_at(std::int64_t offset, std::span<const std::uint8_t> bytes);
    /// Closes the file and reports errors that the system delayed until now.
    void close();

private:
    std::string path_;
    int file_;
};

/// A whole file in memory, followed by zero bytes so that readers may look a little past its end.
class file_image {
public:
    static constexpr std::size_t slack_bytes = 64;

    /// Reads the file as it is; throws file_error, or std::bad_alloc if it does not fit.
    explicit file_image(input_file& file);
    explicit file_image(const std::string& path);

    /// The bytes of the file, without the slack.
    std::span<const std::uint8_t> bytes() const { return {memory_.data(), length_}; }

private:
    memory_block memory_;
    std::size_t length_;
};

/// Creates a missing file, empty. False if it cannot exist: its folder is missing or takes no new file.
bool exists_or_is_made(const std::string& path);

/// The file's date and time in the platform's default form and the local time zone; "" if they are unknown.
std::string file_time_text(const std::string& path);

}  // namespace tamrix
