// A programmer that passes all calls on to another one; tests override what they change.
#pragma once

#include "programmer/programmer.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace tamrix::tests {

class forwarding_programmer : public hw::programmer, protected hw::lumbat, protected hw::devobj {
public:
    explicit forwarding_programmer(std::unique_ptr<hw::programmer> inner) : inner_{std::move(inner)} {}
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { return *this; }

protected:
    std::int32_t usbcomwrite(const std::uint8_t* frame, std::int32_t length) override
    {
        return inner_->transport().usbcomwrite(frame, length);
    }
    std::int32_t usbbulkwrite(const std::uint8_t* data, std::int32_t length) override
    {
        return inner_->transport().usbbulkwrite(data, length);
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        return inner_->transport().usbbulkread(buffer, length, status);
    }

#define TAMRIX_FORWARDED(result, name, parameters, arguments)                                                          \
    result name parameters override { return inner_->device().name arguments; }
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_FORWARDED)
#undef TAMRIX_FORWARDED

private:
    std::unique_ptr<hw::programmer> inner_;
};

}  // namespace tamrix::tests
