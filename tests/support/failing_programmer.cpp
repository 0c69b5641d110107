#include "support/failing_programmer.h"

#include "support/forwarding_programmer.h"

#include <memory>
#include <utility>

namespace tamrix::tests {

namespace {

/// What distinguishes a frame from the others of its stage. The number of a block does not count.
std::string command_of(const std::uint8_t* frame, std::int32_t length)
{
    constexpr int bulk = 10, memory = 9, load_step = 92;
    std::string text = std::to_string(frame[0]);
    if (frame[0] == memory || frame[0] == load_step) text += " " + std::to_string(frame[1]);
    if (frame[0] == bulk) text += " " + std::to_string(frame[2]);
    if (frame[0] == bulk && length > 4) text += " " + std::to_string(frame[3]) + " " + std::to_string(frame[4]);
    return text;
}

class failing_programmer final : public forwarding_programmer {
public:
    failing_programmer(std::unique_ptr<hw::programmer> inner, failure& one)
        : forwarding_programmer{std::move(inner)}, one_{one}
    {}

private:
    bool goes_wrong(failing what, const std::string& command)
    {
        std::vector<step>& steps = one_.steps[what];
        steps.push_back({one_.stage(), command});
        return what == one_.what && static_cast<int>(steps.size()) == one_.at;
    }

    std::int32_t usbcomwrite(const std::uint8_t* frame, std::int32_t length) override
    {
        last_ = command_of(frame, length);
        return goes_wrong(failing::write, last_) ? 1 : forwarding_programmer::usbcomwrite(frame, length);
    }
    std::int32_t usbbulkwrite(const std::uint8_t* data, std::int32_t length) override
    {
        return goes_wrong(failing::write, "data") ? 1 : forwarding_programmer::usbbulkwrite(data, length);
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        return goes_wrong(failing::read, last_) ? 0 : forwarding_programmer::usbbulkread(buffer, length, status);
    }
    void regout(std::int32_t value, std::uint8_t address) override
    {
        last_ = "regout";
        forwarding_programmer::regout(value, address);
    }
    std::int32_t ctlout(std::int32_t value, std::uint8_t address) override
    {
        last_ = "ctlout";
        const std::int32_t result = forwarding_programmer::ctlout(value, address);
        return goes_wrong(failing::switch_reply, last_) ? 1 : result;
    }
    bool replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra) override
    {
        return !goes_wrong(failing::reply, last_) && forwarding_programmer::replywait(count, mode, extra);
    }
    void replycheck(std::int32_t count) override
    {
        if (!goes_wrong(failing::acknowledgement, last_)) forwarding_programmer::replycheck(count);
    }
    std::int32_t hwreset() override
    {
        const std::int32_t result = forwarding_programmer::hwreset();
        return goes_wrong(failing::reset, "hwreset") ? 1 : result;
    }
    std::int32_t regin(std::uint8_t address) override
    {
        const std::int32_t result = forwarding_programmer::regin(address);
        return goes_wrong(failing::port_read, "regin") ? -1 : result;
    }
    std::int32_t boardsel(std::uint8_t code) override
    {
        constexpr std::int32_t no_board = 2;
        const std::int32_t result = forwarding_programmer::boardsel(code);
        return goes_wrong(failing::board, "boardsel") ? no_board : result;
    }

    failure& one_;
    std::string last_;
};

}  // namespace

hw::programmer_source with_failure(hw::programmer_source source, failure& one)
{
    return [source = std::move(source), &one](const hw::reply_memory& replies) {
        return std::make_unique<failing_programmer>(source(replies), one);
    };
}

}  // namespace tamrix::tests
