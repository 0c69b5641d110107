#include "instrument_programmer.h"

#include <memory>

namespace tamrix::tests {

namespace {

class sound_device : public hw::devobj {
protected:
    explicit sound_device(instrument_programmer& answers) : answers_{answers} {}

    instrument_programmer& answers_;

private:
    template <class Result>
    auto operation(const char* name)
    {
        return [this, name](auto...) {
            answers_.at_operation(name);
            return Result();
        };
    }

public:
#define TAMRIX_OPERATION(result, name, parameters, arguments)                                                          \
    result name parameters override { return operation<result>(#name) arguments; }
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)
#undef TAMRIX_OPERATION
};

class instrument final : public hw::programmer, private hw::lumbat, private sound_device {
public:
    using sound_device::sound_device;
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { return *this; }
    explicit instrument(instrument_programmer& answers) : sound_device{answers} {}

private:
    std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t) override
    {
        answers_.at_operation("usbcomwrite");
        if (buffer[0] == 10) answers_.announced_bank = buffer[1];
        return answers_.usbcomwrite(buffer);
    }
    std::int32_t usbbulkwrite(const std::uint8_t*, std::int32_t) override { return 0; }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        answers_.at_operation("usbbulkread");
        const bank_end end = answers_.read_bank(answers_.announced_bank);
        if (end == bank_end::fails) *status = 4;
        if (end != bank_end::arrives) return 0;
        for (std::int32_t i = 0; i < length - 1; ++i) buffer[i] = sample_of(answers_.announced_bank, i);
        *status = 2;
        buffer[length - 1] = 170;
        return 0;
    }
    std::int32_t hwreset() override
    {
        sound_device::hwreset();
        return answers_.hwreset();
    }
    std::int32_t regin(std::uint8_t address) override
    {
        sound_device::regin(address);
        return answers_.regin(answers_.reads++);
    }
    std::int32_t boardsel(std::uint8_t code) override
    {
        sound_device::boardsel(code);
        return answers_.boardsel();
    }
    std::int32_t ctlin(std::uint8_t address) override
    {
        sound_device::ctlin(address);
        return answers_.ctlin(address);
    }
};

}  // namespace

void instrument_programmer::reply(std::uint8_t first_byte) const
{
    replies.ibuf1[0] = first_byte;
    *replies.usbpip0readresult = -1;
}

hw::programmer_source instrument_programmer::source()
{
    return [this](const hw::reply_memory& memory) -> std::unique_ptr<hw::programmer> {
        replies = memory;
        ++made;
        return std::make_unique<instrument>(*this);
    };
}

}  // namespace tamrix::tests
