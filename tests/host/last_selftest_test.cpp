#include "host/last_selftest.h"

#include "support/temp_files.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace tamrix::host {
namespace {

namespace fs = std::filesystem;

const std::string vcc_fault = "pin 7 (port 4 bit 2): VCC driver: expected high, read low";
const std::string ram_fault = "RAM block 3: expected 5A, read 5B";

class kept_selftest : public testing::Test {
protected:
    const tests::temp_folder folder;
    const std::string path = folder.path("own/last-selftest.txt");
    const last_selftest broken{"2026-11-22 14:03", 40, true, "failed, 2 faults", {vcc_fault, ram_fault}};

    std::string content() const
    {
        std::ifstream file{path, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }
    void write(const std::string& text) const { std::ofstream{path, std::ios::binary} << text; }
    std::string why_not() const
    {
        try {
            return read_last_selftest(path) ? "read" : "none";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
};

TEST_F(kept_selftest, is_none_at_first) { EXPECT_EQ(read_last_selftest(path), std::nullopt); }

TEST_F(kept_selftest, is_read_as_it_was_written)
{
    write_last_selftest(path, broken);
    EXPECT_EQ(read_last_selftest(path), broken);
    const last_selftest sound{"2026-11-23 08:00", 9, false, "passed", {}};
    write_last_selftest(path, sound);
    EXPECT_EQ(read_last_selftest(path), sound);
    EXPECT_EQ(std::distance(fs::directory_iterator{folder.path("own")}, {}), 1) << "nothing is left beside it";
}

TEST_F(kept_selftest, is_damaged_wherever_it_is_cut_off)
{
    write_last_selftest(path, broken);
    const std::string whole = content();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        write(whole.substr(0, length));
        EXPECT_TRUE(why_not().starts_with(path + ":")) << length << ": " << why_not();
    }
    write(whole + "x");
    EXPECT_EQ(why_not(), path + ":9: more text where the end of the file was expected");
}

TEST_F(kept_selftest, that_is_damaged_is_told_with_its_line)
{
    write_last_selftest(path, broken);
    const std::string whole = content();
    const auto with = [&](const std::string& old, const std::string& other) {
        std::string text = whole;
        text.replace(text.find(old), old.size(), other);
        write(text);
        return why_not();
    };
    EXPECT_EQ(with("tamrix self-test", "tamrix"), path + ":1: \"tamrix\" where \"tamrix self-test\" was expected");
    EXPECT_EQ(with("14:03", "14h03"), path + ":2: \"2026-11-22 14h03\" where a time was expected");
    EXPECT_EQ(with("model 40", "model forty"), path + ":3: \"forty\" where a number from 0 to 32767 was expected");
    EXPECT_EQ(with("model 40", "model 32768"), path + ":3: \"32768\" where a number from 0 to 32767 was expected");
    EXPECT_EQ(with("model 40", "model -1"), path + ":3: \"-1\" where a number from 0 to 32767 was expected");
    EXPECT_EQ(with("result failed", "result odd"), path + ":4: \"odd\" where passed or failed was expected");
    EXPECT_EQ(with("verdict ", "fverdict "), path + ":5: \"fverdict failed, 2 faults\" where \"verdict\" with a value "
                                                    "was expected");
    EXPECT_EQ(with("faults 2", "faults 3"), path + ":9: the end of the file where a whole line was expected");
    EXPECT_EQ(with("faults 2", "faults 1"), path + ":8: more text where the end of the file was expected");
    EXPECT_EQ(with("RAM", "R\tM"), path + ":8: a control character where text was expected");
    EXPECT_EQ(with(ram_fault, ""), path + ":8: an empty line where a fault was expected");
    EXPECT_EQ(with("when", std::string(1000, 'x')),
              path + ":2: \"" + std::string(40, 'x') + "...\" where \"when\" with a value was expected");
}

TEST_F(kept_selftest, that_cannot_be_read_is_told)
{
    fs::create_directories(path);
    EXPECT_NE(why_not().find(path), std::string::npos);
    fs::remove(path);
    write("");
    fs::resize_file(path, 20 << 20);
    EXPECT_EQ(why_not(), path + ": far too long");
}

TEST_F(kept_selftest, that_cannot_be_written_is_told)
{
    fs::create_directories(folder.path(""));
    std::ofstream{folder.path("own")} << "a file where the folder should be";
    EXPECT_THROW(write_last_selftest(path, broken), std::runtime_error);
}

TEST_F(kept_selftest, belongs_to_the_person)
{
    setenv("XDG_DATA_HOME", "/home/somebody/data", 1);
    EXPECT_EQ(last_selftest_file(), "/home/somebody/data/tamrix/last-selftest.txt");
    unsetenv("XDG_DATA_HOME");
}

TEST_F(kept_selftest, takes_the_report_of_the_plug_in_apart)
{
    setenv("TZ", "UTC-2", 1);
    ::tzset();
    EXPECT_EQ(selftest_of(1795348980, 40, true, "failed, 2 faults\n" + vcc_fault + "\n" + ram_fault), broken);
    unsetenv("TZ");
    ::tzset();
    EXPECT_EQ(selftest_of(0, 9, false, "passed").verdict, "passed");
    EXPECT_TRUE(selftest_of(0, 9, false, "passed").faults.empty());
}

TEST_F(kept_selftest, has_words_that_name_its_first_faults)
{
    EXPECT_EQ(words_of(broken), "2026-11-22 14:03, model 40: failed, 2 faults: " + vcc_fault + "; " + ram_fault);
    EXPECT_EQ(words_of({"2026-11-22 14:03", 40, false, "passed", {}}), "2026-11-22 14:03, model 40: passed");
    EXPECT_EQ(words_of({"2026-11-22 14:03", 40, true, "failed, 5 faults", {"a", "b", "c", "d", "e"}}),
              "2026-11-22 14:03, model 40: failed, 5 faults: a; b; c and 2 more");
}

}  // namespace
}  // namespace tamrix::host
