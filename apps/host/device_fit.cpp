#include "host/device_fit.h"

#include "host/image_text.h"

#include <algorithm>

namespace tamrix::host {

namespace {

/// Formats whose readers put each byte where the file says; the others have orders of their own.
bool is_plain(std::string_view format)
{
    constexpr std::string_view all[] = {"binary", "intel", "motorola", "tektronix"};
    return std::ranges::find(all, format) != std::end(all);
}

std::uint64_t bytes_in(const memory_image& image, memory_segment window)
{
    std::uint64_t count = 0;
    for (const memory_segment& one : image.filled().all()) {
        const std::uint64_t first = std::max(one.first, window.first), end = std::min(one.end(), window.end());
        if (first < end) count += end - first;
    }
    return count;
}

/// The load dialog may have put the bytes elsewhere, or only some of them.
bool holds(std::span<const std::uint8_t> buffer, const memory_image& image, std::uint64_t start)
{
    bool same = true;
    image.visit({start, buffer.size()}, [&](std::uint64_t address, std::span<const std::uint8_t> bytes) {
        same = same && std::ranges::equal(bytes, buffer.subspan(address - start, bytes.size()));
    });
    return same;
}

/// The first byte after the window; if there is none, the first one of the file.
std::uint64_t first_outside(const memory_image& image, memory_segment window)
{
    const auto all = image.filled().all();
    const auto after = std::ranges::find_if(all, [&](const memory_segment& one) { return one.end() > window.end(); });
    return after == all.end() ? all.front().first : std::max(after->first, window.end());
}

}  // namespace

device_fit fit_of(const file_report& report, std::uint64_t start, std::span<const std::uint8_t> buffer)
{
    const memory_segment window{start, buffer.size()};
    const std::uint64_t inside = bytes_in(report.image, window);
    device_fit fit{.outside = report.image.filled().bytes() - inside};
    const bool plain = is_plain(report.format);
    if (plain && holds(buffer, report.image, start)) {
        fit.line = "  taken: " + bytes_text(inside);
    } else {
        fit.line = "  in the range of the device: " + bytes_text(inside) + ", in the order that the load asked for";
    }
    if (fit.outside == 0) return fit;
    const std::uint64_t next = first_outside(report.image, window);
    if (plain) fit.next = next;
    fit.line += "; outside the device: " + bytes_text(fit.outside) + ", from " + address_text(next) + " on";
    return fit;
}

std::string fuses_outside_text(const file_report& report, std::uint64_t fuses)
{
    if (report.fuses <= fuses) return {};
    return "  outside the device, which has " + std::to_string(fuses) +
           " fuses: " + std::to_string(report.fuses - fuses);
}

void place(const memory_image& image, std::uint64_t start, std::span<std::uint8_t> buffer)
{
    image.visit({start, buffer.size()}, [&](std::uint64_t address, std::span<const std::uint8_t> bytes) {
        std::ranges::copy(bytes, buffer.begin() + static_cast<std::ptrdiff_t>(address - start));
    });
}

}  // namespace tamrix::host
