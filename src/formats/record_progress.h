// The progress of the readers that count records: the same steps for Motorola S, Tektronix and Texas Instrument.
#pragma once

#include <cstdint>

namespace tamrix {

/// Says, record by record, when the bar moves.
class record_progress {
public:
    record_progress(std::int64_t file_length, int per_step) : file_length_{file_length}, per_step_{per_step} {}

    /// Counts a record that is about `record_length` characters long. Returns the bar's new value, or a negative number
    /// if it does not move.
    double next(std::int64_t record_length)
    {
        if (record_length != length_) {  // most files have records of one length, and divisions are slow
            length_ = record_length;
            pace_ = 1 + file_length_ / (20 * record_length);
            to_go_ = pace_ - records_ % pace_;
        }
        ++records_;
        if (--to_go_ > 0) return -1;
        to_go_ = pace_;
        const auto value = static_cast<double>(per_step_ * (records_ / pace_));
        return value > 100 ? 98 : value;
    }

private:
    std::int64_t file_length_;
    int per_step_;
    std::int64_t records_ = 0;
    std::int64_t length_ = 0, pace_ = 1;  // of the last record, and how often the bar moves for such
    std::int64_t to_go_ = 1;              // records up to the next move
};

}  // namespace tamrix
