// The devices that can be selected: those of the program, and the person's own, which override them.
#pragma once

#include "host/device_preset.h"

#include <string>
#include <string_view>
#include <vector>

namespace tamrix::workbench {

class device_catalogue {
public:
    /// Reads both files. Throws std::runtime_error with the file and the line that is wrong.
    device_catalogue();

    const std::vector<host::device_preset>& devices() const { return all_; }
    /// True for a device in the person's own file.
    bool is_own(std::string_view name) const;

    /// Puts a device into the person's own file. Throws std::runtime_error if that cannot be written; the list then
    /// does not change.
    void save(const host::device_preset& device);
    /// Removes a device from it; the program's own device of that name is then visible again.
    void remove(std::string_view name);

private:
    void write(std::vector<host::device_preset> own);

    std::string own_file_;
    std::vector<host::device_preset> shipped_, own_, all_;
};

}  // namespace tamrix::workbench
