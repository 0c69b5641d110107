#include "cli/command_inside.h"

#include "cli/command_line.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <unistd.h>

namespace tamrix::tests {

namespace {

/// Takes what is written to it.
class memory_stream {
public:
    memory_stream() : file_{::open_memstream(&bytes_, &length_)} {}
    ~memory_stream()
    {
        std::fclose(file_);
        std::free(bytes_);
    }
    memory_stream(const memory_stream&) = delete;
    memory_stream& operator=(const memory_stream&) = delete;

    std::FILE* file() const { return file_; }
    std::string text() const
    {
        std::fflush(file_);
        return {bytes_, length_};
    }

private:
    char* bytes_ = nullptr;
    std::size_t length_ = 0;
    std::FILE* file_;
};

/// Works in that folder as long as it lives.
class working_folder {
public:
    explicit working_folder(const std::string& folder)
    {
        if (!folder.empty()) std::filesystem::current_path(folder);
    }
    ~working_folder() { std::filesystem::current_path(before_); }
    working_folder(const working_folder&) = delete;
    working_folder& operator=(const working_folder&) = delete;

private:
    const std::filesystem::path before_ = std::filesystem::current_path();
};

}  // namespace

command_result command_inside(const std::vector<std::string>& arguments, const std::string& folder)
{
    const working_folder there{folder};
    const memory_stream out, err;
    cli::console con{out.file(), err.file()};
    const int status = cli::run(arguments, con);
    const auto left = objects_of(::getpid());
    EXPECT_TRUE(left.empty()) << left.size() << " objects were left";
    return {.status = status, .out = out.text(), .err = err.text(), .left_in_shared_memory = left};
}

}  // namespace tamrix::tests
