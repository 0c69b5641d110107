// Random fuse files, read by the reader and by the slow one.
#include "jedec_model.h"

#include "support/plug_in_fixture.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {
namespace {

constexpr std::int64_t buffer_bytes = 2200;

struct random_files : plug_in_fixture {
    random_files() : plug_in_fixture{{.buflength = 0}} {}

    void read(const std::string& text, std::int32_t device_fuses)
    {
        variables.pld = {};
        session.blocks.tlength(0) = device_fuses;
        session.blocks.prgmode(1) = 77;
        std::ranges::fill(session.blocks.ibuffer.span(), untouched);
        // A new name each time: some file systems make a file that is written over wait for the disk.
        std::string file = files.write(std::to_string(++reads_), text);
        methods.readpldfile(file);
    }
    void expect(const jedec_model& model)
    {
        std::string fuses(buffer_bytes, untouched);
        for (const auto& [at, bit] : model.fuses) fuses[static_cast<std::size_t>(at)] = bit;
        const auto held = bytes(0, buffer_bytes);
        EXPECT_EQ(std::string(held.begin(), held.end()), fuses);
        vector_list vectors;
        for (const auto& [number, text] : model.vectors) vectors.store(static_cast<std::size_t>(number) - 1, text);
        for (std::size_t i = 0; i < vector_list::entries; ++i) {
            if (variables.pld.pldvect(i) != vectors(i)) ADD_FAILURE() << "vector " << i + 1;
        }
        EXPECT_EQ(variables.pld.note, model.note);
        EXPECT_EQ(variables.pld.checksum, model.checksum);
        EXPECT_EQ(variables.pld.pldvectcnt, model.vector_count);
        EXPECT_EQ(session.blocks.prgmode(1), model.progress < 0 ? 77 : model.progress);
        EXPECT_EQ(variables.transfer.why_it_failed.empty(), !model.failed);
    }

    temp_folder files;

private:
    int reads_ = 0;
};

TEST(read_jedec, reads_random_files_as_the_slow_reader_does)
{
    random_files f;
    ASSERT_EQ(f.session.blocks.ibuffer.count(), static_cast<std::size_t>(buffer_bytes));
    int stored = 0, failed = 0, with_vectors = 0;
    for (const std::int32_t device_fuses : {0, 64, 2100, 2180, 2195, 5000}) {
        random_jedec source{static_cast<unsigned>(device_fuses)};
        for (int round = 0; round < 200 && !testing::Test::HasFailure(); ++round) {
            const std::string text = source.next();
            SCOPED_TRACE(std::to_string(device_fuses) + " fuses:\n" + text);
            jedec_model model{device_fuses, buffer_bytes};
            model.read(text);
            f.read(text, device_fuses);
            f.expect(model);
            stored += !model.fuses.empty();
            failed += model.failed;
            with_vectors += !model.vectors.empty();
        }
    }
    EXPECT_GT(stored, 600);
    EXPECT_GT(failed, 100);
    EXPECT_GT(with_vectors, 400);
}

}  // namespace
}  // namespace tamrix::tests
