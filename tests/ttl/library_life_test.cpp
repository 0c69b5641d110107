// A library's long life: thousands of changes, a save that is cut off, a file that is damaged.
// POSIX only: it forks, and looks at /dev/shm.
#include "ttl/library.h"
#include "ttl/library_save.h"
#include "ttl/ttlscan.h"
#include "ttl_fixture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <filesystem>
#include <fstream>
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

    void remove(const std::string& name)
    {
        if (count < 2) return;
        const std::string whole = text().substr(0, 15) + header;
        const std::size_t found = folded(whole).find(folded(name));
        if (found == std::string::npos || found == 0) return;
        const auto length = static_cast<unsigned char>(whole[found - 1]);
        std::string rest = found - 1 > 15 ? whole.substr(15, found - 1 - 15) : "";
        if (found + length < whole.size()) rest += whole.substr(found + length);
        header = rest;
        std::string mark = name;
        // Inside another name there is no length; the field is 12 wide anyway.
        const std::size_t blanks = length <= 12 ? 12u - length : 12 - name.size();
        mark += std::string(blanks, ' ');
        std::erase_if(records, [&](const auto& one) { return folded(one).find(folded(mark)) != std::string::npos; });
        --count;
    }

    void add(const slow::device_record& device)
    {
        if (count < 2) return;
        std::size_t at = 0;
        for (int i = 0; i < count; ++i) {
            const auto length = static_cast<unsigned char>(header[at]);
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

std::ptrdiff_t files_in(const std::string& folder)
{
    return std::distance(std::filesystem::directory_iterator{folder}, {});
}

/// In memory: thousands of saves that reach a disk take their time.
struct life_fixture : ttl_fixture {
    life_fixture()
    {
        std::filesystem::create_directories(folder + "lib");
        session.syspath = folder;
    }
    ~life_fixture() { std::filesystem::remove_all(folder); }
    void put_library(const std::string& text) const { std::ofstream{file, std::ios::binary} << text; }
    std::string folder = "/dev/shm/" + fresh_name_space() + "/";
    std::string file = folder + "lib/test.lib";
};

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
    int reset = 0;
    for (int change = 0; change < 10000; ++change) {
        const unsigned kind = random() % 3;
        if (kind == 0 && list.size() > 400) {
            const std::size_t which = random() % list.size();
            const std::string name = list[which];
            model.remove(name);
            EXPECT_FALSE(ttldelete(f.session, name, 1));
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(which));
        } else {
            slow::device_record device = some_device(random);
            if (kind == 1) device.name = list[random() % list.size()];
            const bool listed = std::ranges::find(list, device.name) != list.end();
            if (listed) model.remove(device.name);
            bool walks = true;  // an unclean deletion may have eaten the directory's end
            {
                std::size_t at = 0;
                for (int i = 0; walks && i < model.count; ++i) {
                    const std::size_t next = at < model.header.size()
                                                 ? at + 1 + static_cast<unsigned char>(model.header[at])
                                                 : std::string::npos;
                    walks = at < model.header.size() && next <= model.header.size();
                    if (walks && folded(model.header.substr(at + 1, next - at - 1)) >= folded(device.name)) break;
                    at = next;
                }
            }
            if (walks) {
                model.add(device);
                f.insert(device, list);
            } else {
                EXPECT_THROW(f.insert(device, list), std::runtime_error);
            }
        }
        ASSERT_EQ(read_text(f.file), model.text()) << "change " << change;
        // A directory that an unclean deletion has damaged for good is put right, as a new library would be.
        const library_directory now = read_directory(f.session);
        if (static_cast<std::size_t>(model.count) != model.records.size() || model.count < 400 ||
            model.header.back() != '*') {
            ++reset;
            lines names;
            model.records.clear();
            for (std::size_t i = 0; i < list.size(); ++i) {
                model.records.push_back(slow::device_record{list[i], {"00H0GH0V"}}.line());
                names.push_back(list[i]);
            }
            std::ranges::sort(names, {}, [](const auto& one) { return folded(one); });
            model.header.clear();
            for (const auto& name : names) model.header += static_cast<char>(name.size()) + name;
            model.header += "*";
            model.count = static_cast<int>(list.size());
            f.put_library(model.text());
        }
    }
    EXPECT_GT(reset, 0) << "names inside earlier names were among them";
    EXPECT_LT(reset, 5000);
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
    save_library(f.file, without);
    EXPECT_EQ(files_in(f.folder + "lib"), 1) << "the next save clears away what the killed ones left";
}

/// Everything that reads or changes a library; what is damaged may fail, and a failed change leaves the file.
void use_everywhere(life_fixture& f, const std::string& text)
{
    f.put_library(text);
    const library_directory directory = read_directory(f.session);
    ASSERT_LE(directory.names.size(), 3000u);
    for (const char* name : {"7400", "1234567890AB", "TEN", ""}) ttlload(f.session, name, -1, -1);
    const auto unchanged_or_done = [&](auto change) {
        f.put_library(text);
        try {
            change();
        } catch (const std::runtime_error&) {
            ASSERT_EQ(read_text(f.file), text);
        }
    };
    unchanged_or_done([&] { ttldelete(f.session, "7400", 1); });
    unchanged_or_done([&] {
        lines list;
        f.insert({"7499", nand_rows}, list);
    });
    f.put_library(text);
    try {
        ttlscan(f.session, [](const lines&) {});
    } catch (const std::out_of_range&) {  // a pin count that no socket has
    }
}

const std::vector<slow::device_record> small_library{
    {"TEN", {"0000G0000V", "1111G1111V"}}, nand, {"1234567890AB", {"000G000V"}}};

TEST(damaged_library, cut_at_every_byte_has_a_defined_outcome)
{
    life_fixture f;
    const std::string whole = slow::library_text(small_library);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        use_everywhere(f, whole.substr(0, length));
    }
}

TEST(damaged_library, with_every_byte_changed_has_a_defined_outcome)
{
    life_fixture f;
    const std::string whole = slow::library_text(small_library);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char value : {'\0', '\r', '\n', '$', '9', '\x7F', '\xFF'}) {
            SCOPED_TRACE(std::to_string(at) + " becomes " + std::to_string(value));
            std::string text = whole;
            text[at] = value;
            use_everywhere(f, text);
        }
    }
}

TEST(damaged_library, with_a_wrong_count_has_a_defined_outcome)
{
    life_fixture f;
    for (const char* count : {"0000", "0001", "0002", "0004", "00FF", "7FFF", "8000", "FFFF", "-001", "    ", "xyz!"}) {
        SCOPED_TRACE(count);
        use_everywhere(f, slow::library_text(small_library).replace(11, 4, count));
    }
}

TEST(damaged_library, what_the_fuzz_target_was_fed_has_a_defined_outcome)
{
    constexpr std::size_t choices = 8;
    int files = 0;
    for (const char* kind : {"/seeds/library", "/found/library"}) {
        const std::string folder = std::string{TAMRIX_FUZZ_FOLDER} + kind;
        if (!std::filesystem::exists(folder)) continue;
        for (const auto& entry : std::filesystem::directory_iterator{folder}) {
            SCOPED_TRACE(entry.path().string());
            life_fixture f;
            use_everywhere(f, read_text(entry.path().string()).substr(choices));
            ++files;
        }
    }
    EXPECT_GE(files, 3);
}

}  // namespace
}  // namespace tamrix::tests
