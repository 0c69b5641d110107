// A second reader of fuse files, slow and plain, and the random files on which both have to agree.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace tamrix::tests {

struct jedec_model {
    jedec_model(std::int64_t device, std::int64_t buffer) : device_fuses{device}, buffer_bytes{buffer} {}

    const std::int64_t device_fuses, buffer_bytes;

    std::map<std::int64_t, char> fuses{};  // what was stored, by buffer address
    std::map<int, std::string> vectors{};  // by number; the whole text up to the "*"
    std::string note{};
    std::uint32_t checksum = 0;
    int vector_count = 0;
    int progress = -1;  // none reported
    bool failed = false;

    void read(const std::string& text)
    {
        pace_ = static_cast<std::int64_t>(text.size()) / 12;
        for (const std::string& line : lines_of(text)) {
            take(line);
            if (failed) return;
        }
        vector_count = (vectors.empty() ? 0 : vectors.rbegin()->first) + 1;
    }

    static std::vector<std::string> lines_of(const std::string& text)
    {
        std::vector<std::string> lines(1);
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\n' && i > 0 && text[i - 1] == '\r') continue;
            if (text[i] == '\r' || text[i] == '\n') {
                lines.emplace_back();
            } else {
                lines.back() += text[i];
            }
        }
        if (lines.back().empty()) lines.pop_back();
        return lines;
    }

private:
    enum class row { none, fuses, behind_the_fuses };

    void take(const std::string& line)
    {
        static const std::regex opens{R"(\*?V00.*)"}, vector{R"(\*?V([0-9]+) ([^*]*).*)"}, only_bits{"[*01 ]*"};
        const bool running = line.find("*L") != std::string::npos;
        std::smatch found;
        in_vectors_ = in_vectors_ || (!running && std::regex_match(line, opens));
        in_vectors_ = in_vectors_ && std::regex_match(line, found, vector) && ++vectors_seen_ <= 3000;
        if (in_vectors_) return take_vector(found[1], found[2]);
        if (running || line[0] == 'L') {
            if (take_rows(line)) return;
        } else if (line[0] == 'E') {
            return take_bits(line.substr(1), row::behind_the_fuses, device_fuses + 100);
        } else if (line[0] == 'U') {
            return take_bits(line.substr(1), row::behind_the_fuses, device_fuses);
        } else if (std::regex_match(line, only_bits) && open_ != row::none) {
            return take_bits(line, open_, next_);
        } else if (std::regex_match(line, only_bits) && fuse_row_seen_) {
            return;
        }
        if (!fuse_row_seen_) note += "\n  " + line;
    }

    /// Far above all limits where the digits are many.
    static std::int64_t value_of(const std::string& digits)
    {
        const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
        return digits.size() - first > 9 ? 1'000'000'000 : std::stoll("0" + digits.substr(first));
    }

    void take_vector(const std::string& digits, const std::string& text)
    {
        const std::int64_t number = value_of(digits);
        failed = number < 1 || number > 3001;
        if (!failed) vectors[static_cast<int>(number)] = text;
    }

    /// Every "L" at the start of the line or after a "*" that has a number, up to a blank or to the end of the line.
    bool take_rows(const std::string& line)
    {
        static const std::regex start{"L([0-9]+)( .*)?"};
        bool any = false;
        for (std::size_t at = 0; at < line.size() && !failed; ++at) {
            std::smatch found;
            const std::string rest = line.substr(at);
            if ((at > 0 && line[at - 1] != '*') || !std::regex_match(rest, found, start)) continue;
            any = fuse_row_seen_ = true;
            take_bits(found[2], row::fuses, value_of(found[1]));
        }
        return any;
    }

    void take_bits(const std::string& text, row kind, std::int64_t first)
    {
        open_ = kind;
        next_ = first;
        for (const char character : text) {
            if (character == ' ') continue;
            const bool bit = character == '0' || character == '1';
            if (!bit || (kind == row::fuses && next_ >= device_fuses)) {
                open_ = row::none;
                return;
            }
            if (next_ >= buffer_bytes) {
                failed |= kind == row::fuses;
                if (failed) return;
                continue;
            }
            fuses[next_] = character;
            if (character == '1') checksum += 1u << (next_ % 8);
            ++next_;
            ++bits_;
            if (pace_ > 0 && bits_ % pace_ == 0 && 10 * (bits_ / pace_) < 100) {
                progress = static_cast<int>(10 * (bits_ / pace_));
            }
        }
    }

    std::int64_t pace_ = 0, bits_ = 0, next_ = 0;
    int vectors_seen_ = 0;
    row open_ = row::none;
    bool in_vectors_ = false, fuse_row_seen_ = false;
};

/// Fuse files of all that a file may hold, in any order, most of them with some damage.
class random_jedec {
public:
    explicit random_jedec(unsigned random_start) : chance_{random_start} {}

    std::string next()
    {
        const std::string line_end = pick({"\n", "\r\n", "\r"});
        std::string text = pick({"", "",
                                 "\x02"
                                 "Made by a test*" +
                                     line_end + "QF64*" + line_end});
        for (unsigned left = below(20); left > 0; --left) text += piece(line_end) + pick({"", line_end, line_end});
        for (unsigned left = below(2) * below(4); left > 0 && !text.empty(); --left) damage(text);
        return text;
    }

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(chance_() % limit); }
    std::string pick(const std::vector<std::string>& from) { return from[below(static_cast<unsigned>(from.size()))]; }

    std::string number(unsigned limit)
    {
        const std::string digits = std::to_string(below(limit));
        return std::string(below(5), '0') + digits;
    }
    std::string bits(const std::string& line_end)
    {
        std::string text;
        for (unsigned left = below(24); left > 0; --left) {
            text += pick({"0", "1", "0", "1", "0", "1", "0", "1", "0", "1", "0", "1", " ", line_end});
        }
        return text + pick({"*", "*", "*", ""});
    }
    std::string piece(const std::string& line_end)
    {
        switch (below(10)) {
        case 0:
        case 1:
        case 2: return "L" + pick({number(80), number(80), "2190"}) + pick({" ", " ", line_end}) + bits(line_end);
        case 3: return pick({"E", "U", "*E", "*U"}) + bits(line_end);
        case 4: return pick({"E", "U"}) + bits(line_end) + line_end + bits(line_end);
        case 5: return bits(line_end);
        case 6: return pick({"N a note*", "UHABCD*", "F0*", "C1234*", "Lattice*", "Echo 1*", "*", ""});
        case 7: return pick({"V", "V00", "*V00"}) + number(4000) + " " + pick({"01XHLN*", "1", "", "C*C"});
        default:
            return line_end + "V00" + number(90) + " " + bits("") + line_end + "V" + number(90) + " 10*" + line_end;
        }
    }
    void damage(std::string& text)
    {
        const std::size_t at = below(static_cast<unsigned>(text.size()));
        switch (below(3)) {
        case 0: text[at] = pick({"*", "L", "V", "E", "U", " ", "0", "1", "9", "x", "\n", "\xFF"})[0]; break;
        case 1: text.erase(at, 1 + below(4)); break;
        default: text.resize(at);
        }
    }

    std::mt19937 chance_;
};

}  // namespace tamrix::tests
