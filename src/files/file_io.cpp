#include "files/file_io.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

namespace tamrix {

namespace {

std::string reason(int error)
{
    switch (error) {
    case ENOENT: return "no such file";
    case EACCES: return "permission denied";
    case EISDIR: return "a directory where a file was expected";
    default: return std::strerror(error);
    }
}

}  // namespace

file_error::file_error(diagnostic why) : std::runtime_error{why.text()}, why_{std::move(why)} {}
file_error::file_error(const std::string& path, int error) : file_error{{.file = path, .found = reason(error)}} {}

void input_file::read_zero_padded(std::int64_t offset, std::span<std::uint8_t> target)
{
    const std::size_t got = read_at(offset, target);
    std::ranges::fill(target.subspan(got), std::uint8_t{0});
}

file_image::file_image(input_file& file)
    : memory_{static_cast<std::uint64_t>(file.length()) + slack_bytes},
      length_{file.read_at(0, {memory_.data(), static_cast<std::size_t>(file.length())})}
{}

file_image::file_image(const std::string& path) : file_image{*std::make_unique<input_file>(path)} {}

}  // namespace tamrix
