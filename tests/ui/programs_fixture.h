// The programs on a display: a home of their own, names of their own for the shared blocks.
#pragma once

#include "person.h"
#include "program.h"
#include "support/name_space.h"
#include "verify/jedec_writer.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace fs = std::filesystem;

inline std::string content(const fs::path& path)
{
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

/// A home of its own for the program, and names of its own for the shared blocks.
class programs : public testing::Test {
protected:
    programs()
    {
        folder = fs::temp_directory_path() / ("tamrix-ui-" + mark_of_process());
        fs::create_directories(folder);
        std::ofstream{folder / "demo.hex"} << ":10000000000102030405060708090A0B0C0D0E0F78\n:00000001FF\n";
    }
    ~programs() override { fs::remove_all(folder); }

    std::vector<std::string> settings(std::vector<std::string> more = {}) const
    {
        std::vector<std::string> all{"HOME=" + folder.string(),
                                     "XDG_CONFIG_HOME=" + (folder / "config").string(),
                                     "XDG_CACHE_HOME=" + (folder / "cache").string(),
                                     "XDG_DATA_HOME=",
                                     "TAMRIX_NAMESPACE=" + name_space,
                                     "LD_LIBRARY_PATH=" PROGRAM_FOLDER};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    static void quit(program& workbench)
    {
        workbench.press("ctrl+q");
        EXPECT_EQ(workbench.wait(), 0);
    }
    /// Leaves with changes that are not saved.
    static void discard_and_quit(program& workbench)
    {
        workbench.press("ctrl+q");
        workbench.focus("^Unsaved Changes$");
        workbench.press("alt+d");
        EXPECT_EQ(workbench.wait(), 0);
    }
    std::string buffer(std::size_t count) const
    {
        return content("/dev/shm/" + name_space + "qorfanibuffer").substr(0, count);
    }
    std::string file(const char* name) const { return (folder / name).string(); }
    static std::vector<std::string> shared_objects(const std::string& name_space)
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator{"/dev/shm"}) {
            const std::string name = entry.path().filename();
            if (name.starts_with(name_space)) names.push_back(name);
        }
        return names;
    }

    fs::path folder;
    std::string name_space = "ui" + mark_of_process() + ".";
};

/// A sound fuse file: the fuses are characters "0" and "1".
inline std::string fuse_file(const std::string& header, const std::string& fuses, std::vector<std::string> vectors = {})
{
    tamrix::fuse_map map{.header = header, .vectors = std::move(vectors)};
    for (const char fuse : fuses) map.fuses.push_back(fuse == '1' ? 1 : 0);
    return tamrix::jedec_file(map, 32);
}

/// What another program put on the clipboard.
inline std::string clipboard()
{
    struct empty_form final : scripted_form {
        forms::layout arrangement() override { return forms::column({}); }
    } form;
    wxui::wx_shell screen;
    std::string text;
    during(screen, form, [&] { text = copied(); });
    return text;
}

/// What the log of the workbench says.
inline std::string log_of(program& workbench)
{
    workbench.click_at(0.6, 0.9);
    workbench.press("ctrl+a ctrl+c");
    return clipboard();
}

}  // namespace tamrix::tests
