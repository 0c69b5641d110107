// Puts a new content in the place of a file's old one.
#pragma once

#include "files/byte_target.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tamrix {

/// At every moment the file holds the old content or the new one whole: the new file is written beside the old one and
/// takes its name in one step. It keeps owner, mode and links; a file that is not there yet is made. Only where the
/// folder takes no new file is the old one emptied and written in place, at the end; so is a device or a pipe, at once.
/// New files that killed saves left beside it go away.
class file_replacement final : public byte_target {
public:
    /// Throws file_error where the file cannot be written.
    explicit file_replacement(const std::string& path);
    /// Without take_place() the old content stays.
    ~file_replacement() override;
    file_replacement(const file_replacement&) = delete;
    file_replacement& operator=(const file_replacement&) = delete;

    void write(std::span<const std::uint8_t> bytes) override;
    /// What may happen until the system has the content on the disk.
    enum class lasts : std::uint8_t { power_cut, killed_program };
    /// To be called once, after the last byte. Throws file_error; the old content is still there then, unless it was
    /// written in place.
    void take_place(lasts through);

private:
    class work;
    std::unique_ptr<work> work_;
};

/// The same at once, also when the machine stops.
void replace_file(const std::string& path, std::string_view content);

}  // namespace tamrix
