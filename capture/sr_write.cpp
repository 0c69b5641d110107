#include "capture/formats.h"

#include <exception>

#include <zip.h>

namespace tamrix::capture {

namespace {

std::string metadata_of(const capture_head& head)
{
    // The number of channels has to be ahead of them.
    std::string text = "[global]\nsigrok version=0.5.2\n\n[device 1]\ncapturefile=logic-1\ntotal probes=" +
                       std::to_string(head.names.size()) + "\nsamplerate=" + std::to_string(head.period->hertz()) +
                       " Hz\ntotal analog=0\n";
    for (std::size_t i = 0; i < head.names.size(); ++i) {
        text += "probe" + std::to_string(i + 1) + "=";
        for (const char c : head.names[i]) {
            if (c == '\\') text += '\\';
            text += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
        }
        text += '\n';
    }
    return text + "unitsize=1\n";
}

/// Gives the samples to the archive as it asks for them.
struct packed_samples {
    sample_source& from;
    std::exception_ptr failure{};
    zip_error_t error{};
};

zip_int64_t give_samples(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    auto& samples = *static_cast<packed_samples*>(user);
    switch (command) {
    case ZIP_SOURCE_OPEN:
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE: return 0;
    case ZIP_SOURCE_READ:
        try {
            return static_cast<zip_int64_t>(samples.from.read({static_cast<std::uint8_t*>(data), length}));
        } catch (...) {
            samples.failure = std::current_exception();
            zip_error_set(&samples.error, ZIP_ER_CANCELLED, 0);
            return -1;
        }
    case ZIP_SOURCE_STAT: zip_stat_init(static_cast<zip_stat_t*>(data)); return sizeof(zip_stat_t);
    case ZIP_SOURCE_ERROR: return zip_error_to_data(&samples.error, data, length);
    case ZIP_SOURCE_SUPPORTS: return ZIP_SOURCE_SUPPORTS_READABLE;
    default: zip_error_set(&samples.error, ZIP_ER_OPNOTSUPP, 0); return -1;
    }
}

struct frees {
    void operator()(zip_t* archive) const { zip_discard(archive); }
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};

/// False where there is no memory for it. `source` is the archive's from then on.
bool add(zip_t* archive, const char* name, zip_source_t* source)
{
    const zip_int64_t place = source == nullptr ? -1 : zip_file_add(archive, name, source, 0);
    if (place < 0) zip_source_free(source);
    // Captures are so regular that more effort makes them little shorter.
    return place >= 0 && zip_set_file_compression(archive, static_cast<zip_uint64_t>(place), ZIP_CM_DEFLATE, 1) == 0;
}

void copy(zip_source_t* from, byte_target& to)
{
    std::vector<std::uint8_t> piece(piece_samples);
    if (zip_source_open(from) != 0) throw std::bad_alloc{};
    for (zip_int64_t count; (count = zip_source_read(from, piece.data(), piece.size())) > 0;) {
        to.write(std::span{piece}.first(static_cast<std::size_t>(count)));
    }
    zip_source_close(from);
}

}  // namespace

void write_sr(sample_source& from, byte_target& to, const std::string& path)
{
    const std::unique_ptr<zip_source_t, frees> memory{zip_source_buffer_create(nullptr, 0, 0, nullptr)};
    if (!memory) throw std::bad_alloc{};
    zip_source_keep(memory.get());
    std::unique_ptr<zip_t, frees> archive{zip_open_from_source(memory.get(), ZIP_CREATE | ZIP_TRUNCATE, nullptr)};
    if (!archive) {
        zip_source_free(memory.get());
        throw std::bad_alloc{};
    }
    const std::string metadata = metadata_of(from.head());
    packed_samples samples{from};
    const bool added =
        add(archive.get(), "version", zip_source_buffer(archive.get(), "2", 1, 0)) &&
        add(archive.get(), "metadata", zip_source_buffer(archive.get(), metadata.data(), metadata.size(), 0)) &&
        add(archive.get(), "logic-1-1", zip_source_function(archive.get(), give_samples, &samples));
    if (!added || zip_close(archive.get()) != 0) {
        if (samples.failure) std::rethrow_exception(samples.failure);
        fail_at(path, 0, zip_strerror(archive.get()));
    }
    archive.release();
    copy(memory.get(), to);
}

}  // namespace tamrix::capture
