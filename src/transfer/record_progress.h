// The progress of the readers that count records: the same steps for Motorola S, Tektronix and Texas Instrument.
#pragma once

#include <cstdint>

namespace tamrix {

/// Tells, record by record, when the bar moves.
class record_progress {
public:
    record_progress(std::int64_t file_length, int per_step) : file_length_{file_length}, per_step_{per_step} {}

    /// Counts a record that is about `record_length` characters long. Yields the bar's new value, or a negative number
    /// where it stays.
    double next(std::int64_t record_length)
    {
        const std::int64_t pace = 1 + file_length_ / (20 * record_length);
        if (++records_ % pace != 0) return -1;
        const auto value = static_cast<double>(per_step_ * (records_ / pace));
        return value > 100 ? 98 : value;
    }

private:
    std::int64_t file_length_;
    int per_step_;
    std::int64_t records_ = 0;
};

}  // namespace tamrix
