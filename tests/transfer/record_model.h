// The slow model of the address mapping that the Motorola S and the Tektronix reader share: every byte selection of a
// file of random records, a byte at a time.
#pragma once

#include "load_fixture.h"

#include <gtest/gtest.h>

#include <map>

namespace tamrix::tests {

/// A data record: what it holds, and how it stands in the file.
struct model_record {
    std::int64_t address;
    std::vector<std::uint8_t> data;
    std::string text;
};

/// One load of the model.
struct record_model {
    static constexpr std::int64_t start = 0x31, file_start = 0x123, devbytes = 0x1800;

    std::pair<int, int> from, to;  // step and phase
    std::map<std::int64_t, int> memory{};

    void take(const model_record& record)
    {
        const auto [step, phase] = from;
        const auto [buffer_step, buffer_phase] = to;
        if (record.address < file_start) return;
        const double behind = static_cast<double>(record.address) / static_cast<double>(step);
        if (static_cast<double>(start - file_start) + behind > devbytes) return;
        for (std::int64_t item = 0; (item + 1) * step <= static_cast<std::int64_t>(record.data.size()); ++item) {
            const std::int64_t x = buffer_phase + buffer_step * (item + (record.address - file_start) / step);
            if (x > devbytes) break;
            memory[start + x] = record.data[static_cast<std::size_t>(phase + item * step)];
        }
    }
    void expect_in(plug_in_fixture& f) const
    {
        for (std::int64_t address = 0; address < 0x3000; ++address) {
            const auto known = memory.find(address);
            ASSERT_EQ(f.buffer(address), known != memory.end() ? known->second : plug_in_fixture::untouched) << address;
        }
    }
};

/// Loads 40 records of `next_record` with every selection; `format` is the dialog's option.
inline void expect_every_selection_as_the_slow_model(int format, const std::string& end_record,
                                                     const std::function<model_record()>& next_record)
{
    for (int from = 0; from < 7; ++from) {
        for (int to = 0; to < 7; ++to) {
            SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
            record_model model{selections[from], selections[to]};
            std::string text;
            for (int i = 0; i < 40; ++i) {
                const model_record record = next_record();
                text += record.text;
                model.take(record);
            }
            format_fixture f{format, {.buflength = 0x4000, .tlength = record_model::devbytes}};
            EXPECT_EQ(
                f.read(text + end_record, {.to_buffer = "31", .from_file = "123", .from_mode = from, .to_mode = to}),
                status::done);
            model.expect_in(f);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

}  // namespace tamrix::tests
