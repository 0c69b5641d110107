#include "pld/jedec.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <set>

namespace tamrix::tests {
namespace {

using lines = std::vector<std::string>;

struct write_fixture : plug_in_fixture {
    write_fixture(std::int32_t fuses, std::int16_t page) : plug_in_fixture{{.buflength = 0x1000, .tlength = fuses}}
    {
        session.blocks.pagelength(0) = page;
        session.blocks.wtype(0) = "GAL16V8";
        session.blocks.wcompany(0) = "LATTICE";
        for (std::int64_t i = 0; i < fuses; ++i) buffer(i) = '0';
    }
    /// The lines of the file that the method writes; every one must end with CR LF but perhaps the last.
    lines write()
    {
        std::string file = files.path("out.jed");
        const reply outcome = methods.writepldfile(file);
        EXPECT_TRUE(outcome.ok());
        EXPECT_EQ(outcome.value, variant{});
        lines result;
        const std::string all = read_text(file);
        for (std::size_t at = 0; at < all.size();) {
            const auto end = std::min(all.find("\r\n", at), all.size());
            result.push_back(all.substr(at, end - at));
            at = end + 2;
        }
        return result;
    }
    std::string why() const { return variables.transfer.why_it_failed.found; }

    temp_folder files;
};

TEST(write_jedec, the_header_names_model_type_and_maker_and_a_fuse_count_of_0)
{
    write_fixture f{16, 16};
    const lines written = f.write();
    ASSERT_GE(written.size(), 4u);
    EXPECT_EQ(lines(written.begin(), written.begin() + 4),
              (lines{"\x02MODEL: Brantu programmer", "TYPE:GAL16V8", "DM: LATTICE", "QF0000*"}));
}

TEST(write_jedec, a_device_of_100_fuses_has_four_rows_of_32)
{
    write_fixture f{100, 32};
    f.buffer(97) = '1';
    const lines written = f.write();
    ASSERT_EQ(written.size(), 9u);
    EXPECT_EQ(written[4], "L000000 " + std::string(32, '0') + "*");
    EXPECT_EQ(written[5].substr(0, 8), "L000032 ");
    EXPECT_EQ(written[6].substr(0, 8), "L000064 ");
    EXPECT_EQ(written[7], "L000096 0100*");
    EXPECT_EQ(written[8], "C2*");
}

TEST(write_jedec, a_length_that_is_a_multiple_of_the_page_ends_with_an_empty_row)
{
    write_fixture f{64, 32};
    const lines written = f.write();
    ASSERT_EQ(written.size(), 8u);
    EXPECT_EQ(written[6], "L000064 *");
    EXPECT_EQ(written[7], "C0*");
}

TEST(write_jedec, the_checksum_line_has_the_last_four_digits)
{
    write_fixture f{4000, 100};
    for (int i = 0; i < 4000; ++i) f.buffer(i) = '1';
    EXPECT_EQ(f.write().back(), "CF20C*");  // 500 * 255 = 1F20C
}

TEST(write_jedec, a_vector_ends_behind_its_first_blank)
{
    write_fixture f{16, 16};
    f.variables.pld.pldvect.store(0, "0101 ");
    f.variables.pld.pldvect.store(1, "HL NN");
    const lines written = f.write();
    ASSERT_EQ(written.size(), 9u);
    EXPECT_EQ(written[6], "V000001 0101 *");
    EXPECT_EQ(written[7], "V000002 HL *");
    EXPECT_EQ(f.variables.pld.pldvect(1), "HL" + std::string(46, ' ')) << "the list is cut too";
}

TEST(write_jedec, an_entry_without_a_blank_ends_the_vectors)
{
    write_fixture f{16, 16};
    f.variables.pld.pldvect.store(0, "01");
    f.variables.pld.pldvect.store(2, "10");
    EXPECT_EQ(f.write().size(), 8u);
    f.variables.pld.pldvect.store(0, std::string(48, 'N'));
    EXPECT_EQ(f.write().size(), 7u);
}

TEST(write_jedec, other_characters_are_written_as_their_distance_from_0)
{
    write_fixture f{16, 16};
    f.buffer(0) = 0x40;
    f.buffer(1) = 0x39;
    EXPECT_EQ(f.write()[4], "L000000 109" + std::string(14, '0') + "*");
}

TEST(write_jedec, a_distance_with_a_letter_or_below_0_ends_the_write)
{
    for (const int value : {0x3A, 0x2F, 0xFF, 0x5A, 0xD0}) {
        write_fixture f{40, 16};
        f.buffer(18) = static_cast<std::uint8_t>(value);
        const lines written = f.write();
        ASSERT_EQ(written.size(), 6u) << value;
        EXPECT_EQ(written[4], "L000000 " + std::string(16, '0') + "*");
        EXPECT_EQ(written[5], "L000016 00") << "what was written before the fault stays";
        EXPECT_EQ(f.why().substr(0, 18), "buffer address 12:");
    }
}

TEST(write_jedec, a_page_below_10_ends_the_write_behind_the_first_row)
{
    write_fixture f{40, 8};
    const lines written = f.write();
    ASSERT_EQ(written.size(), 5u);
    EXPECT_EQ(written[4], "L000000 00000000*");
    EXPECT_NE(f.why(), "");
}

TEST(write_jedec, a_page_of_0_ends_the_write_behind_the_header)
{
    write_fixture f{40, 0};
    EXPECT_EQ(f.write().size(), 4u);
    EXPECT_NE(f.why(), "");
}

/// What the progress figure is after `rows` rows: it moves only at rows that two roundings agree on.
int figure_after(int rows, int page)
{
    int figure = 77;
    for (int row = 0; row < rows; ++row) {
        const int tenths = row / (page / 10);
        if (row == page * tenths / 10 && tenths * 10 < 100) figure = tenths * 10;
    }
    return figure;
}

TEST(write_jedec, the_hosts_progress_figure_follows_the_rows)
{
    std::set<int> met;
    for (const int page : {10, 19, 20, 37, 64}) {
        for (int rows = 1; rows <= page + 2 && rows * page <= 0x1000; ++rows) {
            write_fixture f{(rows - 1) * page + 1, static_cast<std::int16_t>(page)};
            f.session.blocks.prgmode(1) = 77;
            f.write();
            const int figure = f.session.blocks.prgmode(1);
            EXPECT_EQ(figure, figure_after(rows, page)) << rows << " rows of " << page;
            met.insert(figure);
        }
    }
    EXPECT_EQ(met, (std::set{0, 10, 20, 30, 40, 50, 60, 70, 80, 90}));
}

TEST(write_jedec, a_file_that_cannot_be_made_leaves_the_reason)
{
    write_fixture f{16, 16};
    std::string file = f.files.path("missing/out.jed");
    EXPECT_TRUE(f.methods.writepldfile(file).ok());
    EXPECT_EQ(f.variables.transfer.why_it_failed.text(), file + ": no such file");
}

TEST(write_jedec, what_is_written_reads_back)
{
    write_fixture f{500, 32};
    const auto noise = random_bytes(500);
    for (std::size_t i = 0; i < 500; ++i) f.buffer(static_cast<std::int64_t>(i)) = '0' + (noise[i] & 1);
    f.variables.pld.pldvect.store(0, "01XHLZNC");
    const auto before = f.bytes(0, 500);
    f.write();
    for (std::int64_t i = 0; i < 500; ++i) f.buffer(i) = 0;
    std::string file = f.files.path("out.jed");
    f.methods.readpldfile(file);
    EXPECT_EQ(f.bytes(0, 500), before);
    EXPECT_EQ(f.variables.pld.pldvect(0).substr(0, 9), "01XHLZNC ");
    EXPECT_EQ(f.variables.pld.pldvectcnt, 2);
}

}  // namespace
}  // namespace tamrix::tests
