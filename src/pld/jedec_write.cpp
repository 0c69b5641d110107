#include "base/arith.h"
#include "files/file_guard.h"
#include "files/text_output.h"
#include "pld/jedec.h"
#include "session/session.h"

#include <cstdio>
#include <stdexcept>

namespace tamrix {

namespace {

std::string six_digits(std::int64_t value)
{
    char text[24];
    std::snprintf(text, sizeof text, "%06lld", static_cast<long long>(value));
    return text;
}

/// Division as the format's arithmetic has it: a divisor of 0 ends the write.
std::int64_t divide(std::int64_t value, std::int64_t by)
{
    if (by == 0) throw std::domain_error{"division by zero: a page length of 10 or more is expected"};
    return value / by;
}

class jedec_writer {
public:
    jedec_writer(session& plug_in, pld_variables& pld, const std::string& fname)
        : plug_in_{plug_in}, pld_{pld}, out_{fname}
    {}
    void write();

private:
    void write_header();
    void write_row(std::int64_t row, std::int64_t page);
    void write_fuse(std::int64_t fuse);
    void report(std::int64_t row, std::int64_t page);
    void write_vectors();

    session& plug_in_;
    pld_variables& pld_;
    text_output out_;
    std::uint32_t checksum_ = 0;
};

void jedec_writer::write()
{
    const std::int64_t page = plug_in_.blocks.pagelength(0);
    try {
        write_header();
        // Both ends included: a length that is a multiple of the page ends with a row without fuses.
        const std::int64_t last = divide(plug_in_.blocks.tlength(0), page);
        for (std::int64_t row = 0; row <= last; ++row) {
            write_row(row, page);
            report(row, page);
        }
        write_vectors();
    } catch (...) {
        out_.flush();  // what was written before the fault stays
        throw;
    }
    const std::string sum = arith::hex(checksum_);
    out_.line("C" + sum.substr(sum.size() > 4 ? sum.size() - 4 : 0) + "*");
    out_.close();
    pld_.checksum = checksum_;
}

void jedec_writer::write_header()
{
    out_.line("\x02MODEL: Brantu programmer");
    out_.line("TYPE:" + plug_in_.blocks.wtype(0).str());
    out_.line("DM: " + plug_in_.blocks.wcompany(0).str());
    // The product is 0 because the row counter is still unset here; readers of these files take the fuse count from
    // elsewhere, and expect this line as it is.
    out_.line("QF0000*");
}

void jedec_writer::write_row(std::int64_t row, std::int64_t page)
{
    out_.text("L" + six_digits(row * page) + " ");
    for (std::int64_t fuse = row * page; fuse < (row + 1) * page && fuse < plug_in_.blocks.tlength(0); ++fuse) {
        write_fuse(fuse);
        out_.breathe();
    }
    out_.line("*");
}

/// A fuse is a character of the buffer. Other characters than "0" and "1" are written as their distance from "0", as
/// long as its hexadecimal text has no letter.
void jedec_writer::write_fuse(std::int64_t fuse)
{
    const int value = plug_in_.blocks.ibuffer(fuse) - '0';
    const bool letter = value < 0 || value % 16 > 9 || value / 16 > 9;
    if (letter) {
        throw std::domain_error{"buffer address " + arith::hex(fuse) + ": " +
                                arith::hex_fixed(plug_in_.blocks.ibuffer(fuse), 2) + " where 30 or 31 was expected"};
    }
    out_.text(arith::hex(value));
    if (value == 1) checksum_ += 1u << (fuse % 8);
}

void jedec_writer::report(std::int64_t row, std::int64_t page)
{
    const std::int64_t tenths = divide(row, page / 10);
    if (row == page * tenths / 10 && tenths * 10 < 100)
        plug_in_.blocks.prgmode(1) = static_cast<std::uint8_t>(tenths * 10);
}

/// The text of an entry ends with its first blank, and is cut there in the list too; an entry without a blank ends the
/// list.
void jedec_writer::write_vectors()
{
    vector_list& vectors = pld_.pldvect;
    for (std::size_t index = 0; index < vector_list::entries; ++index) {
        const std::size_t blank = vectors(index).find(' ');
        if (blank == std::string_view::npos) break;
        const std::string text{vectors(index).substr(0, blank + 1)};
        out_.line("V" + six_digits(static_cast<std::int64_t>(index) + 1) + " " + text + "*");
        vectors.store(index, text);
    }
}

}  // namespace

void write_jedec(session& plug_in, pld_variables& pld, diagnostic& why_it_failed, const std::string& fname)
{
    guard_file(why_it_failed, fname, [&] { jedec_writer{plug_in, pld, fname}.write(); });
}

}  // namespace tamrix
