// Files of a test in a folder of their own, removed at the end.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests {

class temp_folder {
public:
    temp_folder();
    ~temp_folder();
    temp_folder(const temp_folder&) = delete;
    temp_folder& operator=(const temp_folder&) = delete;

    /// The path of a file of this name in the folder.
    std::string path(std::string_view name) const { return (folder_ / name).string(); }
    /// Writes a file and yields its path.
    std::string write(std::string_view name, std::string_view content) const;
    std::string write(std::string_view name, std::span<const std::uint8_t> content) const;

private:
    std::filesystem::path folder_;
};

/// The whole content of a file; a missing file fails the test.
std::string read_text(const std::string& path);
std::vector<std::uint8_t> read_bytes(const std::string& path);

/// When a file was last written, in the form in which a load or a save reports it.
std::string date_and_time_of(const std::string& path);

/// `count` bytes that look random and are the same in every run with one `random_start`.
std::vector<std::uint8_t> random_bytes(std::size_t count, unsigned random_start = 1);

}  // namespace tamrix::tests
