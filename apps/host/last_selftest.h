// The last self-test of the programmer, kept in the folder of the person.
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::host {

struct last_selftest {
    std::string when;  // local time, "2026-11-22 14:03"
    int model = 0;     // modeltype(0)
    bool failed = false;
    std::string verdict;              // "failed, 2 faults"
    std::vector<std::string> faults;  // "pin 7 (port 4 bit 2): VCC driver: expected high, read low"

    bool operator==(const last_selftest&) const = default;
};

/// A self-test that ended at `time`; `report` is the text of tamrix_selftest_report.
last_selftest selftest_of(std::time_t time, int model, bool failed, std::string_view report);

/// When, which model, the verdict: "2026-11-22 14:03, model 40: failed, 2 faults".
std::string heading_of(const last_selftest& test);

/// A line: "2026-11-22 14:03, model 40: failed, 2 faults: pin 7 ...; pin 9 ...". Only the first three faults are named.
std::string words_of(const last_selftest& test);

/// The file in user_data_folder(); it need not exist.
std::string last_selftest_file();

/// Replaces the file; makes its folder. Throws std::runtime_error.
void write_last_selftest(const std::string& path, const last_selftest& test);

/// None if there is no file. Throws std::runtime_error "PATH:LINE: FOUND where EXPECTED was expected" if it is damaged,
/// or with the reason if it cannot be read.
std::optional<last_selftest> read_last_selftest(const std::string& path);

}  // namespace tamrix::host
