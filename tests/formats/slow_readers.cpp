#include "slow_readers.h"

#include <cctype>
#include <cstdlib>

namespace tamrix::tests {

namespace {

/// Ends a load with status 1.
struct fault {};

std::int64_t length_of(const std::string& text) { return static_cast<std::int64_t>(text.size()); }

char letter(const std::string& text, std::int64_t at)
{
    if (at >= length_of(text)) throw fault{};
    return text[static_cast<std::size_t>(at)];
}

bool all_digits(const std::string& text, std::int64_t at, int count)
{
    for (std::int64_t i = at; i < at + count; ++i) {
        if (i >= length_of(text) || std::isxdigit(static_cast<unsigned char>(letter(text, i))) == 0) return false;
    }
    return true;
}

std::int64_t number(const std::string& text, std::int64_t at, int digits)
{
    if (!all_digits(text, at, digits)) throw fault{};
    return std::strtoll(text.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(digits)).c_str(), nullptr,
                        16);
}

/// What the models share: the selection, the buffer and the bar.
struct model {
    slow_load& load;
    const std::string& text;
    std::int64_t step = selections[load.from_mode].first, phase = selections[load.from_mode].second;
    std::int64_t buffer_step = selections[load.to_mode].first, buffer_phase = selections[load.to_mode].second;
    std::int64_t stored = 0, records = 0;

    void put(std::int64_t index, std::int64_t value)
    {
        if (index < 0 || index >= static_cast<std::int64_t>(load.memory.size())) throw fault{};
        load.memory[static_cast<std::size_t>(index)] = static_cast<std::uint8_t>(value);
    }
    void show(std::int64_t percent)
    {
        const auto value = static_cast<double>(percent);
        if (value != (load.progress.empty() ? 0 : load.progress.back())) load.progress.push_back(value);
    }

    // Motorola S, Tektronix and Texas Instrument:

    bool passed_over(std::int64_t address) const
    {
        const double reached = static_cast<double>(address) / static_cast<double>(step);
        return address < load.file_start ||
               static_cast<double>(load.start - load.file_start) + reached > static_cast<double>(load.devbytes);
    }
    std::int64_t position(std::int64_t address, std::int64_t i) const
    {
        return buffer_phase + buffer_step * (i + (address - load.file_start) / step);
    }
    /// False where the load ends with this byte.
    bool put_selected(std::int64_t x, std::int64_t value)
    {
        put(load.start + x, value);
        return ++stored <= load.size;
    }
    void count_record(std::int64_t record_length, int tenth)
    {
        const std::int64_t m = 1 + length_of(text) / (20 * record_length);
        if (++records % m != 0) return;
        const std::int64_t percent = tenth * (records / m);
        show(percent > 100 ? 98 : percent);
    }
};

struct intel_model : model {
    std::int64_t item_bytes;
    std::int64_t p = 0;

    status read();
    bool take_data(std::int64_t relative);
};

/// Takes the data record at p; false where the load fails at once.
bool intel_model::take_data(std::int64_t relative)
{
    const std::int64_t head = p + 1, n = number(text, head, 2);
    if (relative < 0) {
        ++p;
        return true;
    }
    p += 11 + 2 * n;
    const std::int64_t skip = (phase + step - relative % step) % step;
    const std::int64_t b = buffer_phase + buffer_step * (relative / step) + skip * (relative % step);
    if (b > load.devbytes) return true;
    ++records;
    std::int64_t sum = 0;
    for (int field = 0; field < 4; ++field) sum += number(text, head + 2 * field, 2);
    std::int64_t at = head + 8 + 2 * skip;
    const std::int64_t items = (n + step - 1 - (item_bytes == 1 ? skip : phase)) / step;
    for (std::int64_t i = 0; i < items; ++i) {
        const std::int64_t index = load.start + b + buffer_step * item_bytes * i;
        if (index > load.buflength) return true;
        const std::int64_t value = number(text, at, static_cast<int>(2 * item_bytes));
        if (item_bytes == 2) put(index + 1, value / 256);
        put(index, value % 256);
        sum += value / 256 + value % 256;
        at += 2 * step * item_bytes;
    }
    if (step != 1) return true;
    static_cast<void>(letter(text, at + 1));  // a file that ends before the checksum is at fault
    if (all_digits(text, at, 2) && (sum + number(text, at, 2)) % 256 == 0) return true;
    load.wrong_sums.push_back(records);
    return item_bytes == 1;
}

status intel_model::read()
{
    std::int64_t extension = 0;
    const std::int64_t tenth = length_of(text) / 10;
    while (p <= length_of(text)) {
        if (tenth != 0 && p % tenth == 0) show(10 * (p / tenth));
        if (p == length_of(text) || letter(text, p) != ':' || !all_digits(text, p + 1, 8)) {
            ++p;
            continue;
        }
        const std::int64_t type = number(text, p + 7, 2);
        if (type == 1) break;
        if (type > 5) return status::failed;
        if (type == 0) {
            if (!take_data(item_bytes * (extension + number(text, p + 3, 4) - load.file_start))) return status::failed;
        } else if (type == 3 || type == 5) {
            ++p;
        } else {
            extension = number(text, p + 9, 4) * (type == 2 ? 16 : 65536);
            p += item_bytes == 1 ? 15 : 16;
        }
    }
    return load.wrong_sums.empty() ? status::done : status::failed;
}

struct motorola_model : model {
    status read();
};

status motorola_model::read()
{
    for (std::int64_t p = 0;;) {
        while (letter(text, p) != 'S') ++p;  // the end of the file is a fault
        const char type = letter(text, p + 1);
        if (type == '5' || type == '7' || type == '8' || type == '9') return status::done;
        if (type < '0' || type > '3') return status::failed;
        p += 2;
        if (type == '0') continue;
        const int w = type - '0';
        const std::int64_t data_bytes = number(text, p, 2) - w - 2, address = number(text, p + 2, 2 * w + 2);
        p += 2 + 2 * w + 2;
        if (passed_over(address)) continue;
        for (std::int64_t i = 0; i < data_bytes / step; ++i) {
            const std::int64_t x = position(address, i);
            if (x > load.devbytes) break;
            const std::int64_t value = number(text, p + 2 * phase, 2);
            p += 2 * step;
            if (!put_selected(x, value)) return status::done;
        }
        count_record(2 * w + data_bytes + 7, 9);
    }
}

/// The formats that are read line by line. A line's own reader yields false where the load ends with status 0.
struct line_model : model {
    bool take_tektronix(const std::string& line);
    bool take_texas(const std::string& line);

    std::int64_t address = -1;  // of Texas Instrument's next line, once one was accepted
    bool accepted = false;
};

status read_lines(const std::string& text, const std::function<bool(const std::string&)>& take)
{
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && text[end] != '\r' && text[end] != '\n') ++end;
        if (!take(text.substr(at, end - at))) return status::done;
        at = text.substr(end, 2) == "\r\n" ? end + 2 : end + 1;
    }
    return status::failed;
}

bool line_model::take_tektronix(const std::string& line)
{
    if (letter(line, 0) != '/') throw fault{};
    const std::int64_t first = number(line, 1, 4), count = number(line, 5, 2);
    if (count == 0) return false;
    std::int64_t four = 0, six = 0;
    for (int i = 1; i <= 6; ++i) (i <= 4 ? four : six) += number(line, i, 1);
    six += four;
    const std::int64_t check = number(line, 7, 2);
    if (check != four && check != six) throw fault{};
    if (passed_over(first)) return true;
    for (std::int64_t i = 0; i < count / step; ++i) {
        const std::int64_t x = position(first, i);
        if (x > load.devbytes) break;
        if (!put_selected(x, number(line, 9 + 2 * (phase + step * i), 2))) return false;
    }
    count_record(count + 10, 10);
    return true;
}

bool line_model::take_texas(const std::string& line)
{
    if (line.starts_with("q")) return false;
    if (line.starts_with("@")) {
        const std::int64_t first = number(line, 1, 4);
        if (passed_over(first)) return true;
        address = first;
        accepted = true;
        return true;
    }
    if (!accepted) return true;
    const std::int64_t pairs = (length_of(line) + 1) / 3, first = address;
    for (std::int64_t i = 0; i < pairs / step; ++i) {
        const std::int64_t x = position(first, i);
        address = x + 1;
        if (x > load.devbytes) break;
        if (!put_selected(x, number(line, 3 * (phase + step * i), 2))) return false;
    }
    count_record(pairs + 10, 10);
    return true;
}

template <typename work>
status unless_at_fault(const work& read)
{
    try {
        return read();
    } catch (const fault&) {
        return status::failed;
    }
}

}  // namespace

status slow_intel(slow_load& load, const std::string& text)
{
    return unless_at_fault([&] { return intel_model{{load, text}, 1}.read(); });
}

status slow_intel16(slow_load& load, const std::string& text)
{
    return unless_at_fault([&] { return intel_model{{load, text}, 2}.read(); });
}

status slow_motorola(slow_load& load, const std::string& text)
{
    return unless_at_fault([&] { return motorola_model{{load, text}}.read(); });
}

status slow_tektronix(slow_load& load, const std::string& text)
{
    line_model lines{{load, text}};
    return unless_at_fault([&] { return read_lines(text, [&](auto& line) { return lines.take_tektronix(line); }); });
}

status slow_texas(slow_load& load, const std::string& text)
{
    line_model lines{{load, text}};
    return unless_at_fault([&] { return read_lines(text, [&](auto& line) { return lines.take_texas(line); }); });
}

}  // namespace tamrix::tests
