#include "session/session.h"

#include "messages/catalogue.h"

#include <exception>
#include <iostream>
#include <utility>

namespace tamrix {

namespace {

/// A block that fails does not keep the others from being attached, nor does a box that cannot be shown.
void tell_of_failed_block(forms::shell& screen)
{
    constexpr const char* text = "Unable to create memory mapped file";
    try {
        screen.box({.text = text});
    } catch (const std::exception&) {
        std::cerr << text << '\n';
    }
}

}  // namespace

session::session(forms::shell& screen_to_use, std::string name_space)
    : screen{screen_to_use}, blocks{std::move(name_space), [this] { tell_of_failed_block(screen); }}
{
    hardware.replies = [this] {
        const auto ibuf1 = blocks.ibuf1.span();
        const auto ubuf1 = blocks.ubuf1.span();
        return hw::reply_memory{ibuf1.data(), static_cast<std::int32_t>(ibuf1.size()), &blocks.usbpip0readresult(0),
                                ubuf1.data(), static_cast<std::int32_t>(ubuf1.size())};
    };
}

std::string session::text(int base_number) const { return LoadResString(blocks.Language(0) + base_number); }

std::string session::text(hint which) const { return hint_text(blocks.Language(0), which); }

std::string session::text(forms::answer which) const { return answer_text(blocks.Language(0), which); }

std::int64_t session::devbytes() const { return std::int64_t{blocks.wordmode(0)} * blocks.tlength(0); }

void session::tell(int base_number) { screen.box({.text = text(base_number)}); }

}  // namespace tamrix
