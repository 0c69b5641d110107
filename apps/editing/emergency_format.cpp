#include "editing/emergency_format.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace tamrix::editing {

namespace {

static_assert(std::endian::native == std::endian::little, "numbers are written as they are in memory");

constexpr std::uint8_t bytes_record = 'B', value_record = 'V', commit_record = 'C';

/// Reads numbers and bytes; after a failure all are 0 or empty.
class record_reader {
public:
    explicit record_reader(std::span<const std::uint8_t> file) : file_{file} {}

    bool failed() const { return failed_; }
    bool at_end() const { return failed_ || at_ == file_.size(); }
    std::size_t at() const { return at_; }
    std::span<const std::uint8_t> bytes(std::size_t length)
    {
        if (failed_ || length > file_.size() - at_) {
            failed_ = true;
            return {};
        }
        return file_.subspan(std::exchange(at_, at_ + length), length);
    }
    template <class T>
    T number()
    {
        T value{};
        if (const auto from = bytes(sizeof value); !failed_) std::memcpy(&value, from.data(), sizeof value);
        return value;
    }
    std::string text()
    {
        const auto length = number<std::uint32_t>();
        if (length > most_name_bytes) failed_ = true;
        const auto from = bytes(length);
        return {from.begin(), from.end()};
    }

private:
    std::span<const std::uint8_t> file_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

std::size_t address_of(record_reader& reader) { return reader.number<std::uint64_t>(); }

/// After the letter of the record. None if it ends early or is none that the reader could trust.
std::optional<last_commit> read_commit(record_reader& reader)
{
    last_commit found;
    constexpr auto latest = std::chrono::floor<std::chrono::milliseconds>(wall_time::max().time_since_epoch());
    const std::chrono::milliseconds time{reader.number<std::int64_t>()};
    found.time = wall_time{std::clamp(time, std::chrono::milliseconds{0}, latest)};
    found.state.shown = address_of(reader);
    found.state.length = address_of(reader);
    found.state.device = reader.text();
    found.state.file = reader.text();
    if (reader.failed() || found.state.length > longest_copy_bytes || found.state.shown > found.state.length) return {};
    found.end = reader.at() + sizeof(std::uint32_t);
    return found;
}

/// Puts bytes where they belong, as far as `all` reaches.
void place(std::vector<std::uint8_t>& all, std::size_t address, std::size_t length, const auto& put)
{
    if (address >= all.size()) return;
    put(std::span{all}.subspan(address, std::min(length, all.size() - address)));
}

}  // namespace

void copy_records::put(const void* bytes, std::size_t length)
{
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    bytes_.insert(bytes_.end(), first, first + length);
}

void copy_records::add_to_sum()
{
    sum_.add(std::span{bytes_}.subspan(summed_));
    summed_ = bytes_.size();
}

std::vector<std::uint8_t> copy_records::take()
{
    add_to_sum();
    summed_ = 0;
    return std::exchange(bytes_, {});
}

void copy_records::text(std::string_view text)
{
    text = text.substr(0, most_name_bytes);
    number(static_cast<std::uint32_t>(text.size()));
    put(text.data(), text.size());
}

void copy_records::add_bytes(std::size_t address, std::span<const std::uint8_t> bytes)
{
    number(bytes_record);
    number(std::uint64_t{address});
    number(static_cast<std::uint32_t>(bytes.size()));
    put(bytes.data(), bytes.size());
}

void copy_records::add_value(std::size_t address, std::size_t length, std::uint8_t value)
{
    number(value_record);
    number(std::uint64_t{address});
    number(std::uint64_t{length});
    number(value);
}

void copy_records::commit(const copy_state& state, wall_time time)
{
    number(commit_record);
    number(std::int64_t{std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count()});
    number(std::uint64_t{state.shown});
    number(std::uint64_t{state.length});
    text(state.device);
    text(state.file);
    add_to_sum();
    number(sum_.value());
}

std::optional<last_commit> find_commit(std::span<const std::uint8_t> file)
{
    record_reader reader{file};
    if (!std::ranges::equal(reader.bytes(copy_mark.size()), std::span{copy_mark})) return {};
    std::optional<last_commit> last;
    crc32 sum;
    std::size_t summed = 0;
    while (!reader.at_end()) {
        switch (reader.number<std::uint8_t>()) {
        case bytes_record:
            address_of(reader);
            reader.bytes(reader.number<std::uint32_t>());
            break;
        case value_record: reader.bytes(2 * sizeof(std::uint64_t) + 1); break;
        case commit_record: {
            std::optional<last_commit> found = read_commit(reader);
            if (!found) return last;
            sum.add(file.subspan(summed, reader.at() - summed));
            summed = reader.at();
            if (reader.number<std::uint32_t>() != sum.value() || reader.failed()) return last;
            last = std::move(found);
            break;
        }
        default: return last;
        }
    }
    return last;
}

std::vector<std::uint8_t> bytes_of(const last_commit& commit, std::span<const std::uint8_t> file)
{
    std::vector<std::uint8_t> all(commit.state.length);
    record_reader reader{file.first(commit.end)};
    reader.bytes(copy_mark.size());
    while (!reader.at_end()) {
        const auto kind = reader.number<std::uint8_t>();
        if (kind == commit_record) {
            read_commit(reader);
            reader.number<std::uint32_t>();
            continue;
        }
        const std::size_t address = address_of(reader);
        if (kind == bytes_record) {
            const auto from = reader.bytes(reader.number<std::uint32_t>());
            place(all, address, from.size(), [&](auto to) { std::ranges::copy(from.first(to.size()), to.begin()); });
        } else {
            const std::size_t length = reader.number<std::uint64_t>();
            const auto value = reader.number<std::uint8_t>();
            place(all, address, length, [&](auto to) { std::ranges::fill(to, value); });
        }
    }
    return all;
}

}  // namespace tamrix::editing
