#include "files/file_guard.h"
#include "files/text_lines.h"
#include "pld/jedec.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <stdexcept>

namespace tamrix {

namespace {

constexpr std::int64_t extra_fuses_at = 100;  // behind the main fuses

/// The number that `digits` write; none where one of them is no digit, or there is none.
std::optional<std::int64_t> number_of(std::string_view digits)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.empty() || digits.front() == '-' || error != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

bool holds_only_fuses(std::string_view line) { return line.find_first_not_of("*01 ") == std::string_view::npos; }

class jedec_reader {
public:
    jedec_reader(session& plug_in, const std::string& fname)
        : plug_in_{plug_in},
          lines_{fname},
          fuses_{plug_in.blocks.ibuffer.span()},
          main_fuses_{plug_in.blocks.tlength(0)},
          step_{lines_.file_length() / 12},
          until_report_{step_ != 0 ? step_ : std::numeric_limits<std::int64_t>::max()}
    {
        plug_in_.pld.pldvectcnt = 0;
        plug_in_.pld.checksum = 0;
        plug_in_.pld.note.clear();
    }
    void read();

private:
    void take_line(std::string_view line);
    bool take_block(std::string_view& text);
    void take_bits(std::string_view& text);
    void take_extra(std::string_view bits, std::int64_t first);
    bool take_vector(std::string_view line);
    void store(char bit);
    void count_bit();

    session& plug_in_;
    text_lines lines_;
    std::span<std::uint8_t> fuses_;
    const std::int64_t main_fuses_;
    const std::int64_t step_;
    std::int64_t until_report_;
    std::int64_t steps_ = 0;
    std::int64_t fuse_ = 0;    // where the next bit goes
    std::int64_t limit_ = 0;   // of the field in work
    bool row_open_ = false;    // lines of bits continue the last row
    bool fuses_seen_ = false;  // the header is over
    std::int64_t vectors_ = 0;
    std::int64_t highest_vector_ = 0;
};

void jedec_reader::read()
{
    auto line = lines_.next();
    while (line) {
        const bool vectors =
            line->find("*L") == std::string_view::npos && (line->starts_with("V00") || line->starts_with("*V00"));
        if (vectors && take_vector(*line)) {
            do line = lines_.next();
            while (line && take_vector(*line));
        } else {
            take_line(*line);
            line = lines_.next();
        }
    }
    plug_in_.pld.pldvectcnt = static_cast<std::int32_t>(highest_vector_ + 1);
}

void jedec_reader::take_line(std::string_view line)
{
    if (line.starts_with('L') || line.find("*L") != std::string_view::npos) {
        bool taken = false;
        std::string_view rest = line;
        if (!rest.starts_with('L')) rest.remove_prefix(rest.find("*L") + 1);
        for (;;) {
            taken |= take_block(rest);
            const std::size_t next = rest.find("*L");
            if (next == std::string_view::npos) break;
            rest.remove_prefix(next + 1);
        }
        if (taken) return;
    } else if (line.starts_with('E')) {
        return take_extra(line.substr(1), main_fuses_ + extra_fuses_at);
    } else if (line.starts_with('U')) {
        return take_extra(line.substr(1), main_fuses_);
    } else if (fuses_seen_ && holds_only_fuses(line)) {
        if (row_open_) take_bits(line);
        return;
    }
    if (!fuses_seen_) plug_in_.pld.note.append("\n  ").append(line);
}

/// The row that `text` starts with, "L" number blank bits; `text` then stands behind it. False, and nothing taken,
/// where there is no fuse number: then it is some word that begins with "L".
bool jedec_reader::take_block(std::string_view& text)
{
    const std::size_t blank = std::min(text.find(' '), text.size());
    const auto number = number_of(text.substr(1, blank - 1));
    text.remove_prefix(number ? blank : 1);
    if (!number) return false;
    fuses_seen_ = true;
    fuse_ = *number;
    limit_ = main_fuses_;
    row_open_ = true;
    take_bits(text);
    return true;
}

/// Bits up to a character that is none, to the end of the text, or to the end of the field; `text` then stands there.
/// The end of the text leaves the row open for the next line.
void jedec_reader::take_bits(std::string_view& text)
{
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const char character = text[at];
        if (character == ' ') continue;
        row_open_ = (character == '0' || character == '1') && fuse_ < limit_;
        if (!row_open_) break;
        store(character);
    }
    text.remove_prefix(at);
}

/// The bits of a signature or of extra fuses; they go as far as the buffer reaches.
void jedec_reader::take_extra(std::string_view bits, std::int64_t first)
{
    fuse_ = first;
    limit_ = static_cast<std::int64_t>(fuses_.size());
    take_bits(bits);
    row_open_ = false;
}

void jedec_reader::store(char bit)
{
    if (fuse_ >= static_cast<std::int64_t>(fuses_.size())) plug_in_.blocks.ibuffer(fuse_) = 0;  // throws
    fuses_[static_cast<std::size_t>(fuse_)] = static_cast<std::uint8_t>(bit);
    if (bit == '1') plug_in_.pld.checksum += 1u << (fuse_ % 8);
    ++fuse_;
    if (--until_report_ == 0) count_bit();
}

/// The host's progress figure moves with each twelfth of the file.
void jedec_reader::count_bit()
{
    until_report_ = step_;
    ++steps_;
    if (10 * steps_ < 100) plug_in_.blocks.prgmode(1) = static_cast<std::uint8_t>(10 * steps_);
}

/// A line of the vector section; false where the line ends it, or is no vector.
bool jedec_reader::take_vector(std::string_view line)
{
    constexpr std::int64_t most_vectors = 3000;
    if (line.starts_with('*')) line.remove_prefix(1);
    const std::size_t blank = line.find(' ');
    if (!line.starts_with('V') || blank == std::string_view::npos) return false;
    const auto number = number_of(line.substr(1, blank - 1));
    if (!number || ++vectors_ > most_vectors) return false;
    if (*number < 1 || *number > static_cast<std::int64_t>(vector_list::entries)) {
        throw std::out_of_range{"vector number " + std::to_string(*number) + " where 1 to 3001 was expected"};
    }
    const std::string_view text = line.substr(blank + 1);
    plug_in_.pld.pldvect.store(static_cast<std::size_t>(*number - 1), text.substr(0, text.find('*')));
    highest_vector_ = std::max(highest_vector_, *number);
    return true;
}

}  // namespace

void read_jedec(session& plug_in, const std::string& fname)
{
    guard_file(plug_in, fname, [&] { jedec_reader{plug_in, fname}.read(); });
}

}  // namespace tamrix
