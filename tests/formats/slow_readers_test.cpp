// Random files, whole and damaged, with every byte selection: a reader leaves what its slow model leaves.
#include "slow_readers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

/// The same choices in every run.
struct random_source {
    unsigned below(unsigned limit) { return static_cast<unsigned>(generator() % limit); }
    bool one_in(unsigned count) { return below(count) == 0; }
    bytes_of bytes(std::size_t count) { return random_bytes(count, below(1U << 31)); }

    std::mt19937 generator{5};
};

std::string hex4(unsigned value) { return hex2(value >> 8) + hex2(value); }

/// The two digits with which the bytes of `digits` add up to `total`.
std::string check_of(const std::string& digits, unsigned total)
{
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        total -= static_cast<unsigned>(std::stoul(digits.substr(at, 2), nullptr, 16));
    }
    return hex2(total);
}

unsigned digits_sum(const std::string& digits)
{
    unsigned sum = 0;
    for (const char digit : digits) sum += static_cast<unsigned>(std::stoul(std::string{digit}, nullptr, 16));
    return sum;
}

std::string intel_record(random_source& random, unsigned item_bytes)
{
    std::string digits;
    switch (random.below(20)) {
    case 0: digits = "02000004" + hex4(random.below(2)); break;
    case 1: digits = "02000002" + hex4(random.below(0x40)); break;
    case 2: digits = "0400000300000100"; break;
    default:
        const unsigned count = random.below(random.one_in(8) ? 256 : 40);
        digits = hex2(count) + hex4(random.below(0x800)) + "00" + hex_of(random.bytes(count * item_bytes));
    }
    return ":" + digits + check_of(digits, 0) + (random.one_in(10) ? "" : "\r\n");
}

std::string intel_records(random_source& random, unsigned item_bytes)
{
    std::string text = random.one_in(4) ? "made by: hand\r\n" : "";
    for (unsigned count = random.below(60); count > 0; --count) text += intel_record(random, item_bytes);
    return text;
}

std::string motorola_records(random_source& random)
{
    std::string text = random.one_in(2) ? "S00600004844521B\r\n" : "";
    for (unsigned count = random.below(60); count > 0; --count) {
        const unsigned width = 1 + random.below(3), data_bytes = random.below(random.one_in(8) ? 250 : 40);
        const std::string address = std::string(2 * width - 2, '0') + hex4(random.below(0x800));
        const std::string digits = hex2(data_bytes + width + 2) + address + hex_of(random.bytes(data_bytes));
        text += "S" + std::to_string(width) + digits + check_of(digits, 0xFF) + "\r\n";
    }
    return text;
}

std::string tektronix_records(random_source& random)
{
    std::string text;
    for (unsigned count = random.below(60); count > 0; --count) {
        const unsigned data_bytes = 1 + random.below(40);
        const std::string head = hex4(random.below(0x800)) + hex2(data_bytes), data = hex_of(random.bytes(data_bytes));
        const std::string checked = random.one_in(4) ? head.substr(0, 4) : head;
        text += "/" + head + hex2(digits_sum(checked)) + data + hex2(digits_sum(data)) + "\r\n";
    }
    return text;
}

std::string texas_records(random_source& random)
{
    std::string text = random.one_in(4) ? "11 22\n" : "";
    for (unsigned count = random.below(60); count > 0; --count) {
        if (random.one_in(4)) text += "@" + hex4(random.below(0x800)) + "\n";
        for (const std::uint8_t byte : random.bytes(random.below(20))) text += hex2(byte) + " ";
        if (text.ends_with(" ") && !random.one_in(4)) text.pop_back();
        text += random.one_in(8) ? "F\n" : "\n";
    }
    return text;
}

struct text_format {
    const char* name;
    int option;
    status (*model)(slow_load& load, const std::string& text);
    std::string (*records)(random_source& random);
    const char* end_record;
    const char* letters;  // with which a file is damaged
};

void PrintTo(const text_format& one, std::ostream* out) { *out << one.name; }

constexpr char intel_end[] = ":00000001FF\r\n", intel_letters[] = "0123456789AFaf:G\r\n";

constexpr text_format text_formats[] = {
    {"intel", 1, slow_intel, [](random_source& random) { return intel_records(random, 1); }, intel_end, intel_letters},
    {"intel16", 6, slow_intel16, [](random_source& random) { return intel_records(random, 2); }, intel_end,
     intel_letters},
    {"motorola", 2, slow_motorola, motorola_records, "S9030000FC\r\n", "0123456789AFafSSSG\r\n"},
    {"tektronix", 3, slow_tektronix, tektronix_records, "/0000000000r\r\n", "0123456789AFaf/G\r\n"},
    {"texas", 7, slow_texas, texas_records, "q\n", "0123456789AFaf@qG \r\n"},
};

/// Half of the files stay whole; the others have some letters changed, or are cut.
void damage(std::string& text, const std::string& letters, random_source& random)
{
    if (text.empty() || random.one_in(2)) return;
    for (unsigned count = 1 + random.below(3); count > 0; --count) {
        text[random.below(static_cast<unsigned>(text.size()))] =
            letters[random.below(static_cast<unsigned>(letters.size()))];
    }
    if (random.one_in(4)) text.resize(random.below(static_cast<unsigned>(text.size())));
}

/// What the load dialog's host sees of wrong checksums: one line each, and one for all from the sixteenth on.
std::string told_of(const std::vector<std::int64_t>& wrong_sums)
{
    std::string told;
    for (std::size_t i = 0; i < std::min<std::size_t>(wrong_sums.size(), 15); ++i) {
        told += ">>CheckSum Error! in line " + std::to_string(wrong_sums[i]) + "\n";
    }
    return told + (wrong_sums.size() > 15 ? ">>............. \n" : "");
}

struct any_text : testing::TestWithParam<text_format> {
    any_text() : f{GetParam().option, {.buflength = 0x4000}} {}

    /// The byte selections follow each other; 49 loads see all of them.
    slow_load random_load(int number)
    {
        constexpr int texas_instrument = 7;
        const int modes = GetParam().option == texas_instrument ? 1 : 7;  // its mode lists are disabled
        slow_load load{.from_mode = number % modes,
                       .to_mode = number / modes % modes,
                       .start = random.below(0x80),
                       .file_start = random.one_in(2) ? 0 : random.below(0x200),
                       .devbytes = random.one_in(3) ? random.below(0x400) : 0x2000,
                       .buflength = random.one_in(3) ? 0x80 + random.below(0x400) : 0x4000};
        load.size = random.one_in(4) ? random.below(200) : load.devbytes;
        return load;
    }
    /// Loads the text with both and compares all that they leave.
    void compare(slow_load load, const std::string& text)
    {
        std::ranges::fill(f.session.blocks.ibuffer.span(), plug_in_fixture::untouched);
        load.memory.assign(f.session.blocks.ibuffer.span().size(), plug_in_fixture::untouched);
        f.session.blocks.tlength(0) = static_cast<std::int32_t>(load.devbytes);
        f.session.blocks.buflength(0) = static_cast<std::int32_t>(load.buflength);
        f.session.blocks.MainRtstr(0) = "";
        const auto shown_before = static_cast<std::ptrdiff_t>(f.shell.progress().size());
        const status outcome = f.read(text, {.to_buffer = entered(load.start),
                                             .from_file = entered(load.file_start),
                                             .size = entered(load.size),
                                             .from_mode = load.from_mode,
                                             .to_mode = load.to_mode});
        if (load.size >= load.devbytes) load.size = load.devbytes + 100;
        ASSERT_EQ(outcome, GetParam().model(load, text)) << f.why();
        const auto buffer = f.session.blocks.ibuffer.span();
        const auto differs = std::ranges::mismatch(buffer, load.memory).in1;
        ASSERT_EQ(differs, buffer.end()) << "at " << differs - buffer.begin();
        const std::vector<double> shown{f.shell.progress().begin() + shown_before, f.shell.progress().end()};
        ASSERT_EQ(shown, load.progress);
        const std::string told = GetParam().option == 1 ? told_of(load.wrong_sums) : "";
        ASSERT_TRUE(f.status_text().starts_with(told + ">>Load File ")) << f.status_text();
        loaded += outcome == status::done;
    }
    static std::string entered(std::int64_t address) { return hex4(static_cast<unsigned>(address)); }

    format_fixture f;
    random_source random;
    int loaded = 0;
};

INSTANTIATE_TEST_SUITE_P(of, any_text, testing::ValuesIn(text_formats),
                         [](const auto& one) { return std::string{one.param.name}; });

TEST_P(any_text, loads_as_in_the_slow_model_with_every_byte_selection)
{
    constexpr int files = 1000;
    for (int i = 0; i < files; ++i) {
        std::string text = GetParam().records(random);
        if (!random.one_in(8)) text += GetParam().end_record;
        damage(text, GetParam().letters, random);
        const slow_load load = random_load(i);
        SCOPED_TRACE(std::to_string(load.from_mode) + " to " + std::to_string(load.to_mode) + "\n" + text);
        compare(load, text);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(loaded, files / 3) << "too few of them load to their end";
}

TEST_P(any_text, may_be_longer_than_the_window_of_the_readers)
{
    std::string text;
    while (text.size() < std::size_t{600} << 10) text += GetParam().records(random);
    text += GetParam().end_record;
    for (int i = 0; i < 49; ++i) {
        slow_load load = random_load(i);
        load.size = load.devbytes = 0x2000;
        SCOPED_TRACE(std::to_string(load.from_mode) + " to " + std::to_string(load.to_mode));
        compare(load, text);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(loaded, 49 / 3) << "too few of them load to their end";
}

}  // namespace
}  // namespace tamrix::tests
