// A library's long life: thousands of changes, a save that is cut off.
// POSIX only: it forks, and looks at /dev/shm.
#include "files/replace_file.h"
#include "ttl/library/library.h"
#include "ttl/library/life_fixture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <filesystem>
#include <random>
#include <thread>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

char folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
std::string folded(std::string text)
{
    for (char& c : text) c = folded(c);
    return text;
}

/// The file once more as a header line and record lines, changed by the rules of the format.
struct model_library {
    std::string header;  // from the first length byte on, with its *
    std::vector<std::string> records;
    int count = 0;

    std::string text() const
    {
        char digits[8];
        std::snprintf(digits, sizeof digits, "%04X", static_cast<unsigned>(count));
        std::string all = std::string{"$KSM0000000"} + digits + header + "\r\n";
        for (const std::string& record : records) all += record + "\r\n";
        return all + "end-ksm\r\n";
    }

    /// False, and nothing has changed, if the name is inside an earlier one.
    bool remove(const std::string& name)
    {
        const std::string whole = text().substr(0, 15) + header;
        const std::size_t found = folded(whole).find(folded(name));
        const auto length = static_cast<unsigned char>(whole.at(found - 1));
        if (length > 12) return false;
        header = whole.substr(15, found - 16) + whole.substr(found + length);
        const std::string mark = folded(name + std::string(12u - length, ' '));
        std::erase_if(records, [&](const auto& one) { return folded(one).find(mark) != std::string::npos; });
        --count;
        return true;
    }

    void add(const slow::device_record& device)
    {
        std::size_t at = 0;
        for (int i = 0; i < count; ++i) {
            const auto length = static_cast<unsigned char>(header.at(at));
            if (folded(header.substr(at + 1, length)) >= folded(device.name)) break;
            at += 1u + length;
        }
        header.insert(at, static_cast<char>(device.name.size()) + device.name);
        records.insert(records.begin(), device.line());
        ++count;
    }
};

std::string some_name(std::mt19937& random)
{
    static const lines families{"74", "54", "74LS", "74ls", "40", "45", "NP"};
    return families[random() % families.size()] + std::to_string(random() % 1000);
}

slow::device_record some_device(std::mt19937& random)
{
    const std::size_t pins = 8 + 2 * (random() % 5);
    lines rows(1 + random() % 4);
    for (std::string& one : rows) {
        for (std::size_t i = 0; i < pins; ++i) one += "10HLXCVGZ"[random() % 9];
    }
    return {some_name(random), rows};
}

/// One with these devices, whatever their vectors.
model_library library_of(lines names)
{
    model_library made;
    for (const std::string& name : names) made.records.push_back(slow::device_record{name, {"00H0GH0V"}}.line());
    std::ranges::sort(names, {}, [](const auto& one) { return folded(one); });
    for (const std::string& name : names) made.header += static_cast<char>(name.size()) + name;
    made.header += "*";
    made.count = static_cast<int>(names.size());
    return made;
}

std::ptrdiff_t files_in(const std::string& folder)
{
    return std::distance(std::filesystem::directory_iterator{folder}, {});
}

TEST(library, stays_what_the_format_says_through_10000_changes)
{
    std::mt19937 random{2024};
    life_fixture f;
    model_library model{"\x04"
                        "7400\x04"
                        "7402*",
                        {nand.line(), nor.line()},
                        2};
    f.put_library(model.text());
    lines list{"7400", "7402"};
    while (list.size() < 500) {
        slow::device_record device = some_device(random);
        if (std::ranges::find(list, device.name) != list.end()) continue;
        model.add(device);
        f.insert(device, list);
    }
    ASSERT_EQ(read_text(f.file), model.text());
    int refused = 0, with_another_case = 0;
    for (int change = 0; change < 10000; ++change) {
        const unsigned kind = random() % 3;
        if (kind == 0 && list.size() > 400) {
            const auto which = list.begin() + static_cast<std::ptrdiff_t>(random() % list.size());
            if (model.remove(*which)) {
                EXPECT_FALSE(ttldelete(f.session, *which, 1));
                list.erase(which);
            } else {
                ++refused;
                EXPECT_THROW(ttldelete(f.session, *which, 1), std::runtime_error) << *which;
            }
        } else {
            slow::device_record device = some_device(random);
            if (kind == 1) device.name = list[random() % list.size()];
            const bool listed = std::ranges::find(list, device.name) != list.end();
            if (!listed || model.remove(device.name)) {
                model.add(device);
                f.insert(device, list);
            } else {
                ++refused;
                EXPECT_THROW(f.insert(device, list), std::runtime_error) << device.name;
            }
        }
        ASSERT_EQ(read_text(f.file), model.text()) << "change " << change;
        // A deletion takes the records of both cases of a name out; the library is made anew then.
        if (static_cast<std::size_t>(model.count) == model.records.size()) continue;
        ++with_another_case;
        model = library_of(list);
        f.put_library(model.text());
    }
    EXPECT_GT(refused, 0) << "names inside earlier names were among them";
    EXPECT_GT(with_another_case, 0);
}

TEST(library, is_the_old_or_the_new_one_whole_after_a_process_was_killed_while_it_saved)
{
    std::mt19937 random{5};
    life_fixture f;
    std::vector<slow::device_record> devices;
    for (int i = 0; i < 300; ++i) devices.push_back({"D" + std::to_string(10000 + i), nand_rows});
    const std::string without = slow::library_text(devices);
    std::vector<std::string> names;
    for (const auto& one : devices) names.push_back(one.name);
    names.emplace_back("D99999");
    devices.insert(devices.begin(), {"D99999", nor.rows});
    const std::string with = slow::library_text(names, devices);
    int old_found = 0, new_found = 0, left_a_file = 0;
    for (int turn = 0; turn < 200; ++turn) {
        f.put_library(without);
        int line[2];
        ASSERT_EQ(::pipe(line), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            (void)!::write(line[1], "x", 1);
            for (;;) {  // adds and deletes until it is killed
                lines list;
                f.insert({"D99999", nor.rows}, list);
                ttldelete(f.session, "D99999", 1);
            }
        }
        char begun = 0;
        EXPECT_EQ(::read(line[0], &begun, 1), 1);
        std::this_thread::sleep_for(std::chrono::microseconds{random() % 3000});
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(line[0]);
        ::close(line[1]);
        EXPECT_TRUE(WIFSIGNALED(status));
        const std::string now = read_text(f.file);
        ASSERT_TRUE(now == without || now == with) << "turn " << turn << ", " << now.size() << " bytes";
        ++(now == with ? new_found : old_found);
        if (files_in(f.folder + "lib") > 1) ++left_a_file;
    }
    EXPECT_GT(old_found, 0);
    EXPECT_GT(new_found, 0);
    EXPECT_GT(left_a_file, 0);
    replace_file(f.file, without);
    EXPECT_EQ(files_in(f.folder + "lib"), 1) << "the next save clears away what the killed ones left";
}

}  // namespace
}  // namespace tamrix::tests
