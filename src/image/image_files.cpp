#include "image/image_files.h"

#include "files/text_output.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace tamrix {

namespace {

constexpr std::uint64_t four_gigabytes = std::uint64_t{1} << 32;
constexpr std::uint64_t segment_bytes = 0x10000;

/// Hexadecimal, as people write an address.
std::string address_text(std::uint64_t address)
{
    std::array<char, 16> digits{};
    std::size_t count = 1;
    while (count < digits.size() && address >> 4 * count != 0) ++count;
    hex_digits::encode_number(address, static_cast<int>(count), digits.data());
    return "0x" + std::string{digits.data(), count};
}

void refuse_above(const memory_image& image, const image_form& form, std::uint64_t limit, const char* format)
{
    const auto refuse = [&](const char* what, std::uint64_t address) {
        throw image_error{std::string{what} + " " + address_text(address) + " is above " + address_text(limit - 1) +
                          ", the highest address of " + format};
    };
    if (!image.empty() && image.extent().end() > limit) refuse("the last byte, at", image.extent().end() - 1);
    if (form.start_address && *form.start_address >= limit) refuse("the start address", *form.start_address);
}

/// Calls `record` with at most `most` bytes at a time, none of them across a multiple of `boundary`.
template <class Record>
void in_records(const memory_image& image, std::size_t most, std::uint64_t boundary, Record record)
{
    std::array<std::uint8_t, 256> gathered{};
    for (const memory_segment& segment : image.filled().all()) {
        std::size_t count = 0;
        std::uint64_t first = segment.first;
        std::size_t room = 0;
        const auto begin = [&](std::uint64_t at) {
            first = at;
            count = 0;
            room = static_cast<std::size_t>(std::min<std::uint64_t>(most, boundary - at % boundary));
        };
        begin(segment.first);
        image.visit(segment, [&](std::uint64_t at, std::span<const std::uint8_t> bytes) {
            while (!bytes.empty()) {
                const std::size_t taken = std::min(room - count, bytes.size());
                if (count == 0 && taken == room) {  // in one piece, as most records are
                    record(at, bytes.first(taken));
                    begin(at + taken);
                } else {
                    std::ranges::copy(bytes.first(taken), gathered.begin() + static_cast<std::ptrdiff_t>(count));
                    count += taken;
                    if (count == room) {
                        record(first, std::span{gathered}.first(count));
                        begin(at + taken);
                    }
                }
                bytes = bytes.subspan(taken);
                at += taken;
            }
        });
        if (count > 0) record(first, std::span{gathered}.first(count));
    }
}

void write_binary(const memory_image& image, const image_form&, byte_target& to)
{
    image.visit([&](std::uint64_t, std::span<const std::uint8_t> bytes) { to.write(bytes); });
}

std::uint8_t byte_of(std::uint64_t value, int place) { return static_cast<std::uint8_t>(value >> 8 * place); }

/// The lowest byte first, as a record's head is wanted.
std::uint64_t joined(std::initializer_list<std::uint64_t> bytes)
{
    std::uint64_t all = 0;
    int place = 0;
    for (const std::uint64_t byte : bytes) all |= (byte & 0xFF) << 8 * place++;
    return all;
}

void intel_record(text_output& out, unsigned address, unsigned type, std::span<const std::uint8_t> data)
{
    constexpr unsigned good_sum = 0;
    out.record<4>(":", joined({data.size(), address >> 8, address, type}), data, good_sum);
}

void write_intel(const memory_image& image, const image_form& form, byte_target& to)
{
    constexpr unsigned data_type = 0, end_type = 1, linear_type = 4, start_type = 5;
    refuse_above(image, form, four_gigabytes, "Intel HEX");
    text_output out{to};
    std::optional<std::uint64_t> upper;
    in_records(image, form.record_bytes, segment_bytes, [&](std::uint64_t at, std::span<const std::uint8_t> bytes) {
        if (upper != at / segment_bytes) {
            upper = at / segment_bytes;
            intel_record(out, 0, linear_type, std::array{byte_of(*upper, 1), byte_of(*upper, 0)});
        }
        intel_record(out, static_cast<unsigned>(at % segment_bytes), data_type, bytes);
    });
    if (form.start_address) {
        const std::uint64_t start = *form.start_address;
        intel_record(out, 0, start_type,
                     std::array{byte_of(start, 3), byte_of(start, 2), byte_of(start, 1), byte_of(start, 0)});
    }
    intel_record(out, 0, end_type, {});
    out.close();
}

void motorola_record(text_output& out, std::string_view type, std::uint64_t address, std::span<const std::uint8_t> data)
{
    constexpr std::size_t address_and_checksum = 5;
    constexpr unsigned good_sum = 0xFF;
    const std::uint64_t head =
        joined({data.size() + address_and_checksum, address >> 24, address >> 16, address >> 8, address});
    out.record<5>(type, head, data, good_sum);
}

void write_motorola(const memory_image& image, const image_form& form, byte_target& to)
{
    refuse_above(image, form, four_gigabytes, "Motorola S");
    text_output out{to};
    in_records(image, form.record_bytes, four_gigabytes,
               [&](std::uint64_t at, std::span<const std::uint8_t> bytes) { motorola_record(out, "S3", at, bytes); });
    motorola_record(out, "S7", form.start_address.value_or(0), {});
    out.close();
}

unsigned digit_sum(std::span<const std::uint8_t> bytes)
{
    unsigned sum = 0;
    for (const std::uint8_t byte : bytes) sum += (byte >> 4) + (byte & 15u);
    return sum;
}

void tektronix_record(text_output& out, std::uint64_t address, std::span<const std::uint8_t> data)
{
    const std::array<std::uint8_t, 3> head{byte_of(address, 1), byte_of(address, 0),
                                           static_cast<std::uint8_t>(data.size())};
    unsigned none = 0;
    out.text("/");
    out.bytes(head, none);
    out.byte(digit_sum(head));
    out.bytes(data, none);
    if (!data.empty()) out.byte(digit_sum(data));
    out.end_line();
}

void write_tektronix(const memory_image& image, const image_form& form, byte_target& to)
{
    refuse_above(image, form, segment_bytes, "Tektronix");
    text_output out{to};
    in_records(image, form.record_bytes, segment_bytes,
               [&](std::uint64_t at, std::span<const std::uint8_t> bytes) { tektronix_record(out, at, bytes); });
    tektronix_record(out, form.start_address.value_or(0), {});
    out.close();
}

struct image_writer {
    std::string_view format;
    write_image_routine write;
    std::size_t most_record_bytes;
};

constexpr std::array writers{
    image_writer{"binary", write_binary, 0},
    image_writer{"intel", write_intel, 255},
    image_writer{"motorola", write_motorola, 250},
    image_writer{"tektronix", write_tektronix, 255},
};

const image_writer* writer_of(std::string_view format)
{
    const auto found = std::ranges::find(writers, format, &image_writer::format);
    return found != writers.end() ? &*found : nullptr;
}

}  // namespace

write_image_routine image_writer_of(std::string_view format)
{
    const image_writer* const found = writer_of(format);
    return found != nullptr ? found->write : nullptr;
}

std::size_t most_record_bytes(std::string_view format)
{
    const image_writer* const found = writer_of(format);
    return found != nullptr ? found->most_record_bytes : 0;
}

}  // namespace tamrix
