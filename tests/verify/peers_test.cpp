// Other tools read the same files: what is sound here they take, with the same data, and what they take is sound here,
// but for the reasons that are listed.
#include "support/temp_files.h"
#include "verify/random_files.h"
#include "verify/verify_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>

namespace tamrix::tests {
namespace {

/// A remark on a line that begins so, and what is in the remark.
struct listed_reason {
    std::string line;
    std::string remark;
};

struct peer {
    const char* name;
    const char* format;
    random_file (*make)(std::mt19937&);
    const char* command;                    // with $f for the file; its output is Motorola records
    std::vector<listed_reason> not_minded;  // what it takes all the same
    std::vector<std::string> bases_it_adds_up;
};

class peers_of_verifiers : public testing::TestWithParam<peer> {
protected:
    /// What the peer makes of each file; none where it refuses it.
    std::vector<std::optional<reading>> read_by_peer(const std::vector<std::string>& contents)
    {
        for (std::size_t i = 0; i < contents.size(); ++i) folder.write("f" + std::to_string(i), contents[i]);
        const std::string loop = "cd '" + folder.path("") + "' && for f in f*; do " + GetParam().command +
                                 " >$f.said 2>&1 && touch $f.taken; done; true";
        EXPECT_EQ(std::system(loop.c_str()), 0);
        std::vector<std::optional<reading>> all;
        for (std::size_t i = 0; i < contents.size(); ++i) {
            const std::string name = "f" + std::to_string(i);
            const bool taken = std::filesystem::exists(folder.path(name + ".taken"));
            all.push_back(taken ? std::optional{verify("motorola", read_text(folder.path(name + ".out")))}
                                : std::nullopt);
        }
        return all;
    }
    std::string said(std::size_t index) { return read_text(folder.path("f" + std::to_string(index) + ".said")); }

    temp_folder folder;
};

std::string line_of(const std::string& content, std::uint64_t number)
{
    std::istringstream lines{content};
    std::string line;
    while (number-- > 0 && std::getline(lines, line)) {
    }
    return line;
}

/// Whether the peer does not mind any of the remarks.
bool are_listed(const reading& here, const std::string& content, const std::vector<listed_reason>& reasons)
{
    return std::ranges::all_of(here.found.remarks, [&](const diagnostic& remark) {
        const std::string line = remark.line ? line_of(content, *remark.line) : "";
        return std::ranges::any_of(reasons, [&](const listed_reason& one) {
            return line.starts_with(one.line) && remark.text().find(one.remark) != std::string::npos;
        });
    });
}

bool has_all(const std::string& text, const std::vector<std::string>& parts)
{
    return !parts.empty() && std::ranges::all_of(parts, [&](const auto& part) { return text.find(part) != text.npos; });
}

/// A carriage return alone or control-Z; the peers take neither.
bool has_old_line_ends(const std::string& content)
{
    for (std::size_t at = content.find('\r'); at != content.npos; at = content.find('\r', at + 1)) {
        if (content.compare(at, 2, "\r\n") != 0) return true;
    }
    return content.find('\x1A') != content.npos;
}

TEST_P(peers_of_verifiers, take_what_is_sound_here)
{
    std::mt19937 random{11};
    std::vector<random_file> files;
    std::vector<std::string> contents;
    for (int i = 0; i < 60; ++i) contents.push_back(files.emplace_back(GetParam().make(random)).content);
    const auto read = read_by_peer(contents);
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (has_all(contents[i], GetParam().bases_it_adds_up)) continue;
        ASSERT_TRUE(read[i]) << contents[i] << said(i);
        EXPECT_TRUE(read[i]->bytes == files[i].bytes) << contents[i];
    }
}

TEST_P(peers_of_verifiers, refuse_the_same_damage_but_for_listed_reasons)
{
    std::mt19937 random{12};
    std::vector<std::string> contents;
    for (int i = 0; i < 250; ++i) contents.push_back(damaged_text(GetParam().make(random).content, random));
    const auto read = read_by_peer(contents);
    int damaged = 0;
    for (std::size_t i = 0; i < contents.size(); ++i) {
        const reading here = verify(GetParam().format, contents[i]);
        damaged += here.found.damaged();
        if (here.found.damaged() == !read[i]) continue;
        EXPECT_TRUE(read[i] || has_old_line_ends(contents[i])) << said(i) << contents[i];
        EXPECT_TRUE(are_listed(here, contents[i], GetParam().not_minded)) << here.remarks() << contents[i];
    }
    EXPECT_GT(damaged, 200);
}

const listed_reason filled_twice{"", "which has data of an earlier record"};  // the same data
const listed_reason no_intel_end{"", "where the end record :00000001FF"},
    no_motorola_end{"", "where an end record, S7"};
const listed_reason after_end_record{"", "a line after the end record"};
const listed_reason no_intel_record{"", "a line without \":\""}, no_motorola_record{"", "in column 1 where 'S'"};

const listed_reason mixed_types{"S", "record type S"};

const peer all_peers[] = {
    {"srec_cat_intel",
     "intel",
     random_intel_file,
     "srec_cat $f -intel -o $f.out -motorola -address-length=4",
     {filled_twice, no_intel_end, after_end_record, no_intel_record},
     {}},
    {"srec_cat_motorola",
     "motorola",
     random_motorola_file,
     "srec_cat $f -motorola -o $f.out -motorola -address-length=4",
     {filled_twice,
      no_motorola_end,
      after_end_record,
      no_motorola_record,
      {"S0", "one header at most"},
      {"", "no data"}},
     {}},
    {"objcopy_intel",
     "intel",
     random_intel_file,
     "objcopy -I ihex -O srec --srec-forceS3 $f $f.out",
     {filled_twice, no_intel_end, after_end_record},
     {":02000002", ":02000004"}},
    // It looks into no header and no count.
    {"objcopy_motorola",
     "motorola",
     random_motorola_file,
     "objcopy -I srec -O srec --srec-forceS3 $f $f.out",
     {filled_twice, no_motorola_end, after_end_record, mixed_types, {"S0", ""}, {"S5", ""}},
     {}},
};

INSTANTIATE_TEST_SUITE_P(all, peers_of_verifiers, testing::ValuesIn(all_peers),
                         [](const auto& info) { return std::string{info.param.name}; });

}  // namespace
}  // namespace tamrix::tests
