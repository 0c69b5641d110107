// The library file as a reader of it sees it: byte columns, and every record played on its own chip.
#include "chip_socket.h"
#include "chips/library.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numeric>
#include <random>
#include <set>
#include <sstream>

namespace tamrix::tests {
namespace {

std::string file_bytes(const std::filesystem::path& file)
{
    std::ifstream in{file, std::ios::binary};
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

const std::string& library()
{
    static const auto text = file_bytes(std::filesystem::path{TAMRIX_DATA_FOLDER} / "lib" / "test.lib");
    return text;
}

/// CR LF ends a line, a lone LF is data.
std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = text.find("\r\n", at);
        EXPECT_NE(end, std::string::npos);
        if (end == std::string::npos) break;
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

struct read_record {
    std::string name;
    std::size_t pins = 0;
    std::vector<std::string> rows;
};

read_record record_of(const std::string& line)
{
    read_record made;
    made.name = line.substr(1, line.substr(1, 12).find(' '));
    const auto count = std::stoul(line.substr(13, 2), nullptr, 16);
    made.pins = std::stoul(line.substr(16, 2));
    for (std::size_t row = 0; row + 1 < count; ++row)
        made.rows.push_back(line.substr(19 + row * (made.pins + 1), made.pins));
    return made;
}

std::vector<read_record> records()
{
    std::vector<read_record> made;
    for (const auto& line : lines_of(library()))
        if (line[0] == '$' && line.substr(0, 4) != "$KSM") made.push_back(record_of(line));
    return made;
}

TEST(library, it_holds_what_the_chips_of_today_give)
{
    const auto sets = sim::make_all_vectors(all_chips());
    EXPECT_TRUE(library() == sim::library_text(all_chips(), sets))
        << "run: tamrix-chips generate data/chips --out data/lib/test.lib --out data/lib1/test190.lib";
    std::size_t faults = 0, found = 0;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        faults += sets[i].faults * (1 + all_chips()[i].aliases.size());
        found += sets[i].found * (1 + all_chips()[i].aliases.size());
    }
    EXPECT_GE(static_cast<double>(found), 0.99 * static_cast<double>(faults));
}

TEST(library, both_files_are_the_same)
{
    EXPECT_TRUE(library() == file_bytes(std::filesystem::path{TAMRIX_DATA_FOLDER} / "lib1" / "test190.lib"));
}

TEST(library, the_header_lists_every_device_in_order_and_no_name_inside_an_earlier_one)
{
    const auto lines = lines_of(library());
    const auto& header = lines.at(0);
    EXPECT_EQ(header.substr(0, 11), "$KSM0000000");
    EXPECT_LT(header.size(), 3000u);
    const auto count = std::stoul(header.substr(11, 4), nullptr, 16);
    EXPECT_GE(count, 150u);
    EXPECT_EQ(count, records().size());
    std::size_t at = 15;
    std::string before;
    for (std::size_t i = 0; i < count; ++i) {
        const auto length = static_cast<std::size_t>(header.at(at));
        const auto name = header.substr(at + 1, length);
        EXPECT_LT(before, name);
        EXPECT_EQ(header.find(name), at + 1) << name;
        EXPECT_EQ(records()[i].name, name);
        before = name;
        at += length + 1;
    }
    EXPECT_EQ(header.substr(at), "*");
    EXPECT_EQ(lines.back(), "end-ksm");
}

TEST(library, every_record_keeps_to_its_columns)
{
    for (const auto& line : lines_of(library())) {
        if (line[0] != '$' || line.substr(0, 4) == "$KSM") continue;
        const auto read = record_of(line);
        EXPECT_LE(line.size(), 3000u);
        EXPECT_EQ(line[15], '\2');
        ASSERT_EQ(line.size(), 18 + read.rows.size() * (read.pins + 1) + 1) << read.name;
        EXPECT_EQ(line.back(), '*');
        EXPECT_TRUE(!read.rows.empty() && read.rows.size() <= 254);
        for (std::size_t row = 0; row < read.rows.size(); ++row) {
            EXPECT_EQ(static_cast<std::size_t>(line[18 + row * (read.pins + 1)]), read.pins);
            EXPECT_EQ(read.rows[row].find_first_not_of("10HLCXZVG"), std::string::npos);
            EXPECT_EQ(std::ranges::count(read.rows[row], 'V'), 1);
            EXPECT_EQ(std::ranges::count(read.rows[row], 'G'), 1);
            EXPECT_EQ(read.rows[row].find('V'), read.rows[0].find('V'));
            EXPECT_EQ(read.rows[row].find('G'), read.rows[0].find('G'));
        }
    }
}

TEST(library, a_name_inside_an_earlier_one_is_refused)
{
    const std::string pins = "pins A B C GND Y Z NC VCC\nY = A & B\nZ = !C\n";
    const auto chips = sim::read_chips("chip 47400\n" + pins + "chip 7400\n" + pins, "x.chip");
    const auto sets = sim::make_all_vectors(chips);
    try {
        sim::library_text(chips, sets);
        FAIL();
    } catch (const sim::chip_error& failed) {
        EXPECT_STREQ(failed.what(), "x.chip:5: the name 7400 stands inside a name before it in the library");
    }
}

/// Plays rows on a part, one pin after the other: slow, and with nothing in common with the maker of the rows.
class slow_player {
public:
    slow_player(const std::string& name, std::size_t pins)
        : part_{sim::make_part(*sim::find_chip(all_chips(), name))}, tester_(pins, sim::level::open), drives_(tester_)
    {}

    int stuck_pin = -1;
    sim::level stuck_at = sim::level::low;

    void power_up() { part_->power_up(); }
    void drive(std::size_t pin, sim::level level)
    {
        tester_[pin] = level;
        settle();
    }
    /// Whether all letters are met. `order` holds the pins in the order in which they change.
    bool play(const std::string& row, const std::vector<std::size_t>& order)
    {
        for (const auto pin : order) drive(pin, level_of(row[pin]));
        for (const auto level : {sim::level::high, sim::level::low})
            for (const auto pin : order)
                if (row[pin] == 'C') drive(pin, level);
        bool met = true;
        for (std::size_t pin = 0; pin < row.size(); ++pin) {
            const auto high = node(pin) == sim::level::high;
            if (row[pin] == 'H' || row[pin] == 'Z') met = met && high;
            if (row[pin] == 'L') met = met && !high;
        }
        return met;
    }
    bool fights() const
    {
        for (std::size_t pin = 0; pin < tester_.size(); ++pin)
            if (tester_[pin] != sim::level::open && drives_[pin] != sim::level::open) return true;
        return false;
    }

private:
    static sim::level level_of(char letter)
    {
        return letter == '1' ? sim::level::high : letter == '0' || letter == 'C' ? sim::level::low : sim::level::open;
    }
    sim::level node(std::size_t pin) const
    {
        if (tester_[pin] != sim::level::open) return tester_[pin];
        if (static_cast<int>(pin) == stuck_pin) return stuck_at;
        return drives_[pin] != sim::level::open ? drives_[pin] : sim::level::high;
    }
    void settle()
    {
        for (int round = 0; round < 20; ++round) {
            std::vector<sim::level> nodes;
            for (std::size_t pin = 0; pin < tester_.size(); ++pin)
                nodes.push_back(static_cast<int>(pin) == stuck_pin ? stuck_at : node(pin));
            const auto before = drives_;
            part_->settle(nodes, drives_);
            if (drives_ == before) return;
        }
    }

    std::unique_ptr<sim::part> part_;
    std::vector<sim::level> tester_, drives_;
};

/// Upward, downward, by ports from the bottom of the socket and back, and two that are mixed up.
std::vector<std::vector<std::size_t>> orders(std::size_t pins, unsigned seed)
{
    std::vector<std::size_t> upward(pins);
    std::iota(upward.begin(), upward.end(), std::size_t{0});
    std::vector<std::vector<std::size_t>> made{upward};
    made.emplace_back(upward.rbegin(), upward.rend());
    auto ports = upward;
    const auto group = [&](std::size_t pin) {
        return pin < pins / 2 ? (pins / 2 - 1 - pin) / 4 : (pin - pins / 2) / 4;
    };
    std::ranges::stable_sort(ports, {}, group);
    made.push_back(ports);
    made.emplace_back(ports.rbegin(), ports.rend());
    std::mt19937 random{seed};
    for (int i = 0; i < 2; ++i) {
        for (std::size_t last = pins - 1; last > 0; --last) std::swap(upward[last], upward[random() % (last + 1)]);
        made.push_back(upward);
    }
    return made;
}

/// Leaves a part in some state: random levels at the inputs of row 0, many times.
void stir(slow_player& player, const std::string& row, unsigned seed)
{
    std::mt19937 random{seed};
    for (int i = 0; i < 300; ++i) {
        const auto pin = random() % row.size();
        if (row[pin] == '1' || row[pin] == '0' || row[pin] == 'C')
            player.drive(pin, random() % 2 != 0 ? sim::level::high : sim::level::low);
    }
}

TEST(library, every_device_passes_its_record_in_any_order_and_from_any_state)
{
    for (const auto& device : records()) {
        unsigned run = 0;
        for (const auto& order : orders(device.pins, 5)) {
            slow_player player{device.name, device.pins};
            player.power_up();
            if (run++ % 2 != 0) stir(player, device.rows[0], run);
            for (std::size_t row = 0; row < device.rows.size(); ++row) {
                ASSERT_TRUE(player.play(device.rows[row], order)) << device.name << " row " << row << " order " << run;
                ASSERT_FALSE(player.fights()) << device.name << " row " << row;
            }
        }
    }
}

TEST(library, a_stuck_pin_fails_as_the_maker_of_the_vectors_says)
{
    std::set<std::string> graded;
    for (const auto& device : records()) {
        const auto* chip = sim::find_chip(all_chips(), device.name);
        if (device.name.size() % 2 != 0 && device.name.back() % 2 != 0) continue;  // a sample
        if (!graded.insert(chip->name).second || device.rows.size() > 100) continue;
        const auto order = orders(device.pins, 5)[2];
        for (std::size_t pin = 0; pin < device.pins; ++pin) {
            const auto role = chip->plan->pins[pin].role;
            if (role == sim::pin_role::vcc || role == sim::pin_role::gnd || role == sim::pin_role::none) continue;
            for (const auto level : {sim::level::low, sim::level::high}) {
                slow_player player{device.name, device.pins};
                player.stuck_pin = static_cast<int>(pin);
                player.stuck_at = level;
                player.power_up();
                const bool passed =
                    std::ranges::all_of(device.rows, [&](const auto& row) { return player.play(row, order); });
                EXPECT_FALSE(passed) << device.name << " with " << chip->plan->pins[pin].name << " stuck";
            }
        }
    }
    EXPECT_GT(graded.size(), 60u);
}

TEST(library, an_empty_socket_fails_every_record)
{
    for (const auto& device : records()) {
        const auto low = [](const std::string& row) { return row.find('L') != std::string::npos; };
        EXPECT_TRUE(std::ranges::any_of(device.rows, low)) << device.name;
    }
}

}  // namespace
}  // namespace tamrix::tests
