#include "capture/sr_archive.h"

namespace tamrix::capture {

sr_archive::sr_archive(const std::string& path) : path_{path}
{
    const input_file readable{path};  // with the reason of the system where it is not
    int error = 0;
    archive_.reset(zip_open(path.c_str(), ZIP_RDONLY, &error));
    if (!archive_) fail("no zip file, or a damaged one", "a sigrok session");
}

std::optional<sr_archive::entry> sr_archive::find(const std::string& name) const
{
    zip_stat_t found;
    if (zip_stat(archive_.get(), name.c_str(), 0, &found) != 0) return std::nullopt;
    if ((found.valid & ZIP_STAT_SIZE) == 0) fail(name + " without a length");
    return entry{found.index, found.size, name};
}

sr_archive::open_entry sr_archive::open(const entry& one) const
{
    open_entry file{zip_fopen_index(archive_.get(), one.number, 0)};
    if (!file) fail(one.name + ": " + zip_strerror(archive_.get()));
    return file;
}

std::size_t sr_archive::read(zip_file_t* file, const entry& one, std::span<std::uint8_t> target) const
{
    const zip_int64_t count = zip_fread(file, target.data(), target.size());
    if (count < 0) fail(one.name + ": " + zip_file_strerror(file));
    return static_cast<std::size_t>(count);
}

std::string sr_archive::text_of(const std::string& name) const
{
    constexpr std::uint64_t most = 1 << 20;
    const auto one = find(name);
    if (!one) fail("no entry " + name, "a sigrok session");
    if (one->bytes > most)
        fail(name + " of " + std::to_string(one->bytes) + " bytes", "at most " + std::to_string(most));
    const auto file = open(*one);
    std::string text(one->bytes, '\0');
    text.resize(read(file.get(), *one, {reinterpret_cast<std::uint8_t*>(text.data()), text.size()}));
    return text;
}

}  // namespace tamrix::capture
