// A folder with captures that are written and read.
#pragma once

#include "capture/capture_files.h"
#include "capture/random_capture.h"
#include "support/temp_files.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace tamrix::tests {

class capture_bench : public testing::Test {
protected:
    using file_format = capture::file_format;

    static capture::recording random_recording(std::mt19937& random, std::size_t length, unsigned channels)
    {
        capture::recording made{{{}, period(random)}, random_capture(random, length, channels)};
        for (unsigned i = 0; i < channels; ++i) made.head.names.push_back("P" + std::to_string(21 + i));
        return made;
    }
    static capture::sample_period period(std::mt19937& random)
    {
        constexpr const char* texts[] = {"3.5 us",      "100 ns",        "3.4 us", "1 ps",
                                         "1/3000000 s", "100 s",         "1/7 s",  "12.345678 ms",
                                         "1/285714 s",  "1/999999937 s", "1.5 ps", "99.9999999 s"};
        return *capture::sample_period::of_text(texts[random() % std::size(texts)]);
    }
    std::string write(const capture::recording& made, const std::string& name, file_format format)
    {
        const std::string path = folder.path(name);
        write_capture(*source_of(made), path, format);
        return path;
    }
    static capture::recording read(const std::string& path, file_format format,
                                   const capture::reading_options& options = {})
    {
        return load_capture(*open_capture(path, format, options), {}, 1 << 24);
    }
    /// What is wrong with a file, after its path.
    std::string fault_of(const std::string& content, file_format format, const capture::reading_options& options = {})
    {
        const std::string path = folder.write("damaged", content);
        try {
            read(path, format, options);
        } catch (const file_error& error) {
            const std::string text = error.why().text();
            return text.starts_with(path) ? text.substr(path.size()) : text;
        }
        return "";
    }
    void run(const std::string& command)
    {
        const std::string whole = "cd '" + folder.path("") + "' && (" + command + ") >said 2>&1";
        EXPECT_EQ(std::system(whole.c_str()), 0) << command << read_text(folder.path("said"));
    }

    temp_folder folder;
};

}  // namespace tamrix::tests
