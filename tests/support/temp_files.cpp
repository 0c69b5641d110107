#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <ctime>
#include <fstream>
#include <iterator>
#include <random>

#include <sys/stat.h>

namespace tamrix::tests {

temp_folder::temp_folder()
{
    std::random_device random;
    do {
        folder_ = std::filesystem::temp_directory_path() / ("tamrix-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder_));
}

temp_folder::~temp_folder()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::string temp_folder::write(std::string_view name, std::string_view content) const
{
    const std::string file = path(name);
    std::ofstream{file, std::ios::binary} << content;
    return file;
}

std::string temp_folder::write(std::string_view name, std::span<const std::uint8_t> content) const
{
    return write(name, std::string_view{reinterpret_cast<const char*>(content.data()), content.size()});
}

std::string read_text(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>{file}, {}};
}

std::vector<std::uint8_t> read_bytes(const std::string& path)
{
    const std::string text = read_text(path);
    return {text.begin(), text.end()};
}

std::string date_and_time_of(const std::string& path)
{
    struct stat info {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    char text[100];
    EXPECT_NE(std::strftime(text, sizeof text, "%x %X", std::localtime(&info.st_mtime)), 0u);
    return text;
}

std::vector<std::uint8_t> random_bytes(std::size_t count, unsigned random_start)
{
    std::mt19937 generator{random_start};
    std::vector<std::uint8_t> bytes(count);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(generator() >> 24);
    return bytes;
}

}  // namespace tamrix::tests
