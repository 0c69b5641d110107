// The USB transport in a DLL of the host's installation.
#pragma once

#include "programmer/lumbat.h"
#include "tamrix/windows_programmer.h"

#include <string>

namespace tamrix::hw {

class lumbat_dll final : public lumbat {
public:
    /// Loads the DLL, which stays loaded, and finds its functions. Throws programmer_error.
    explicit lumbat_dll(const std::string& path);

    std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) override;
    std::int32_t usbbulkwrite(const std::uint8_t* buffer, std::int32_t length) override;
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override;

private:
    tamrix_usbcomwrite usbcomwrite_;
    tamrix_usbbulkwrite usbbulkwrite_;
    tamrix_usbbulkread usbbulkread_;
};

}  // namespace tamrix::hw
