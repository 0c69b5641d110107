// A zip file that is read entry by entry. Used by this folder only.
#pragma once

#include "capture/formats.h"

#include <memory>
#include <optional>
#include <string>

#include <zip.h>

namespace tamrix::capture {

class sr_archive {
public:
    /// Throws file_error.
    explicit sr_archive(const std::string& path);

    struct entry {
        std::uint64_t number, bytes;  // as the archive says
        std::string name;
    };
    /// None where there is no such entry. Throws file_error where its length is unknown.
    std::optional<entry> find(const std::string& name) const;
    /// The whole content of one of at most 1 MiB. Throws file_error.
    std::string text_of(const std::string& name) const;

    struct closes {
        void operator()(zip_t* archive) const { zip_discard(archive); }
        void operator()(zip_file_t* file) const { zip_fclose(file); }
    };
    using open_entry = std::unique_ptr<zip_file_t, closes>;
    open_entry open(const entry& one) const;
    /// Throws file_error for damaged data.
    std::size_t read(zip_file_t* file, const entry& one, std::span<std::uint8_t> target) const;

    [[noreturn]] void fail(std::string found, std::string expected = {}) const
    {
        fail_at(path_, 0, std::move(found), std::move(expected));
    }

private:
    std::string path_;
    std::unique_ptr<zip_t, closes> archive_;
};

}  // namespace tamrix::capture
