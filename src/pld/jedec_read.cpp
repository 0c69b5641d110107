#include "files/file_guard.h"
#include "pld/jedec.h"
#include "pld/jedec_fields.h"
#include "session/session.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace tamrix {

namespace {

constexpr std::int64_t extra_fuses_at = 100;  // after the main fuses

/// The host's progress figure, which moves with each twelfth of the file, counted in bits.
class bit_progress {
public:
    bit_progress(session& plug_in, std::int64_t file_length)
        : plug_in_{plug_in},
          step_{file_length >= 12 ? file_length / 12 : std::numeric_limits<std::int64_t>::max()},
          until_report_{step_}
    {}
    void count_bit()
    {
        if (--until_report_ > 0) return;
        until_report_ = step_;
        ++steps_;
        if (10 * steps_ < 100) plug_in_.blocks.prgmode(1) = static_cast<std::uint8_t>(10 * steps_);
    }

private:
    session& plug_in_;
    const std::int64_t step_;
    std::int64_t until_report_;
    std::int64_t steps_ = 0;
};

/// Puts the fields of a fuse file where the host looks for them.
class jedec_reader {
public:
    jedec_reader(session& plug_in, pld_variables& pld, const std::string& fname)
        : plug_in_{plug_in}, pld_{pld}, fields_{fname}, progress_{plug_in, fields_.file_length()}
    {
        pld_.pldvectcnt = 0;
        pld_.checksum = 0;
        pld_.note.clear();
    }
    void read();

private:
    void take(const jedec_field& field);
    void store_bits(std::string_view bits);
    void store_vector(std::int64_t number, std::string_view levels);

    session& plug_in_;
    pld_variables& pld_;
    jedec_fields fields_;
    bit_progress progress_;
    const std::span<std::uint8_t> buffer_{plug_in_.blocks.ibuffer.span()};
    const std::int64_t main_fuses_{plug_in_.blocks.tlength(0)};
    std::int64_t fuse_ = 0;   // where the next bit goes
    std::int64_t limit_ = 0;  // of the bits of one field
    std::int64_t highest_vector_ = 0;
};

void jedec_reader::read()
{
    while (const auto field = fields_.next()) take(*field);
    pld_.pldvectcnt = static_cast<std::int32_t>(highest_vector_ + 1);
}

void jedec_reader::take(const jedec_field& field)
{
    const auto buffer_end = static_cast<std::int64_t>(buffer_.size());
    const auto begin_at = [this](std::int64_t fuse, std::int64_t limit) {
        fuse_ = fuse;
        limit_ = limit;
    };
    switch (field.what) {
    case jedec_field::kind::header: pld_.note.append("\n  ").append(field.text); return;
    case jedec_field::kind::vector: return store_vector(field.number, field.text);
    case jedec_field::kind::fuses: begin_at(field.number, main_fuses_); break;
    case jedec_field::kind::signature: begin_at(main_fuses_, buffer_end); break;
    case jedec_field::kind::extra_fuses: begin_at(main_fuses_ + extra_fuses_at, buffer_end); break;
    case jedec_field::kind::more_bits: break;
    }
    store_bits(field.text);
}

void jedec_reader::store_bits(std::string_view bits)
{
    for (const char bit : bits) {
        if (bit == ' ') continue;
        if (fuse_ >= limit_) return;
        const auto index = static_cast<std::size_t>(fuse_);
        if (index >= buffer_.size()) plug_in_.blocks.ibuffer(fuse_) = 0;  // throws
        buffer_[index] = static_cast<std::uint8_t>(bit);
        pld_.checksum += (bit == '1' ? 1u : 0u) << (fuse_ % 8);
        ++fuse_;
        progress_.count_bit();
    }
}

void jedec_reader::store_vector(std::int64_t number, std::string_view levels)
{
    if (number < 1 || number > static_cast<std::int64_t>(vector_list::entries)) {
        throw std::out_of_range{"vector number " + std::to_string(number) + " where 1 to 3001 was expected"};
    }
    pld_.pldvect.store(static_cast<std::size_t>(number - 1), levels);
    highest_vector_ = std::max(highest_vector_, number);
}

}  // namespace

void read_jedec(session& plug_in, pld_variables& pld, diagnostic& why_it_failed, const std::string& fname)
{
    guard_file(why_it_failed, fname, [&] { jedec_reader{plug_in, pld, fname}.read(); });
}

}  // namespace tamrix
