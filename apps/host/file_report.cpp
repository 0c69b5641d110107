#include "host/file_report.h"

#include "base/arith.h"
#include "files/byte_source.h"
#include "host/image_text.h"
#include "verify/jedec.h"
#include "verify/svf.h"
#include "verify/verification.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace tamrix::host {

namespace {

constexpr std::size_t most_shown = 10;

std::string hex(std::uint64_t value, int digits) { return "0x" + arith::hex_fixed(value, digits); }

void take_damage(file_report& report, const verification& found)
{
    report.damaged_places = found.remark_count;
    for (std::size_t i = 0; i < std::min(found.remarks.size(), most_shown); ++i)
        report.remarks.push_back(found.remarks[i].text());
    if (found.remark_count > most_shown)
        report.remarks.push_back(report.path + ": damaged at " + places_text(found.remark_count) + " in all");
}

void add_segments(file_report& report, std::span<const memory_segment> all)
{
    if (all.size() < 2) return;
    for (const memory_segment& one : all.first(std::min(all.size(), most_shown)))
        report.lines.push_back("  " + range_text(one) + " (" + bytes_text(one.length) + ")");
    if (all.size() > most_shown) report.lines.push_back("  and " + std::to_string(all.size() - most_shown) + " more");
}

void report_image(file_report& report, verify_routine verify, byte_source& from)
{
    const verification found = verify(from, report.path, report.image);
    take_damage(report, found);
    const segment_list& filled = report.image.filled();
    report.lines.push_back(report.path + ": " + report.format + ", " + extent_text(filled));
    add_segments(report, filled.all());
    if (found.start_address) report.lines.push_back("  start address: " + address_text(*found.start_address));
    if (!found.header.empty()) report.lines.push_back("  header: " + found.header);
    const image_sums sums = sums_of(report.image);
    report.lines.push_back("  sum of bytes: " + hex(sums.sum, 8) + " (16 bits: " + hex(sums.sum & 0xFFFF, 4) +
                           "), CRC-32: " + hex(sums.crc32, 8));
}

void report_fuses(file_report& report, byte_source& from)
{
    const jedec_reading found = verify_jedec(from, report.path);
    take_damage(report, found);
    const fuse_map& map = found.map;
    report.fuses = map.fuses.size();
    report.lines.push_back(report.path + ": jedec, fuses: " + std::to_string(report.fuses) +
                           ", of which 1: " + std::to_string(std::ranges::count(map.fuses, 1)) +
                           ", by default: " + std::to_string(report.fuses - found.in_rows - found.missing) +
                           ", not in the file: " + std::to_string(found.missing));
    report.lines.push_back("  fuse checksum: " + arith::hex_fixed(found.fuse_sum, 4) +
                           ", vectors: " + std::to_string(map.vectors.size()));
}

void report_vectors(file_report& report, byte_source& from)
{
    const svf_reading found = verify_svf(from, report.path);
    take_damage(report, found);
    report.lines.push_back(report.path + ": svf, statements: " + std::to_string(found.statements) +
                           ", bits shifted: " + std::to_string(found.bits_shifted));
}

}  // namespace

file_report report_on(const std::string& path, std::string_view format)
{
    file_report report{.path = path, .format = std::string{format}};
    file_source from{path};
    if (format == "jedec") {
        report_fuses(report, from);
    } else if (format == "svf") {
        report_vectors(report, from);
    } else if (const verify_routine verify = verifier_of(format)) {
        report_image(report, verify, from);
    } else {
        throw std::invalid_argument{report.format + ": a format that is not known"};
    }
    return report;
}

std::string damage_text(const file_report& report)
{
    return std::filesystem::path{report.path}.filename().string() + " is damaged at " +
           places_text(report.damaged_places) + ".";
}

}  // namespace tamrix::host
