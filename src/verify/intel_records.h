// The records of an Intel file, of bytes or of 16-bit words.
#pragma once

#include "verify/findings.h"
#include "verify/hex_record.h"
#include "verify/record_lines.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tamrix {

class intel_records {
public:
    /// Addresses and the count of a data record are in units of `unit` bytes: 1, or 2 with the high byte first. All
    /// others have to outlive it.
    intel_records(byte_source& from, const std::string& name, data_taker& data, unsigned unit)
        : lines_{from}, found_{name, data}, unit_{unit}
    {}

    verification read();

private:
    /// What the addresses of data records are added to, and where they end.
    enum class address_room { short_only, segment, linear };

    void take_line();
    void take_record(const hex_record& record, std::size_t payload, bool sound);
    void take_data(const hex_record& record, std::size_t payload);
    void take_base(const hex_record& record, std::size_t payload, bool sound);
    void take_start(const hex_record& record, std::size_t payload, bool sound);
    std::size_t payload_of(const hex_record& record) const;
    void expect_count(const hex_record& record, unsigned expected);
    file_place here() const { return in_line(lines_.number()); }

    record_lines lines_;
    findings found_;
    unsigned unit_;
    address_room room_ = address_room::short_only;
    std::uint64_t base_ = 0;  // in units
    bool end_met_ = false;
    bool ended_ = false;
};

}  // namespace tamrix
