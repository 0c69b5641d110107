#include "cli/attached_plug_in.h"

#include "cli/console.h"

#include <cerrno>
#include <cstddef>
#include <future>
#include <span>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace tamrix::cli {

namespace {

std::string own_name_space() { return "cli-" + std::to_string(::getpid()) + "-"; }

/// A failed call or a box that the plug-in shows while it attaches is the end of the command.
void check(const reply& outcome, const shell& screen)
{
    if (!outcome.ok()) fail(outcome.error);
    if (!screen.boxes().empty()) fail(screen.boxes().front().text);
}

bool take_pages_of(std::span<std::uint8_t> part)
{
#if defined(MADV_POPULATE_WRITE)
    constexpr int not_known_to_the_system = EINVAL;
    return ::madvise(part.data(), part.size(), MADV_POPULATE_WRITE) == 0 || errno == not_known_to_the_system;
#else
    return true;
#endif
}

/// A load fills the whole buffer, so its pages are taken at one stroke, by two processors: that is quicker than one by
/// one, and where memory is short it is an error and not a deadly signal.
void take_pages(std::span<std::uint8_t> buffer)
{
    constexpr std::size_t page_bytes = 4096, worth_a_thread = std::size_t{4} << 20;
    const std::size_t half = buffer.size() < worth_a_thread ? 0 : buffer.size() / 2 / page_bytes * page_bytes;
    std::future<bool> first;
    if (half != 0) first = std::async(std::launch::async, take_pages_of, buffer.first(half));
    const bool second_taken = take_pages_of(buffer.subspan(half));
    const bool first_taken = !first.valid() || first.get();
    if (!first_taken || !second_taken) fail("no memory for a buffer of " + std::to_string(buffer.size()) + " bytes");
}

}  // namespace

attached_plug_in::attached_plug_in(std::int32_t language)
    : blocks{own_name_space(), 0, {tamrix_text_new, tamrix_text_get, tamrix_text_free}}, state{screen, own_name_space()}
{
    blocks.value<std::int32_t>("Language") = language;
    std::int16_t num = blocks.num();
    check(methods.bufcomopt(num), screen);
    blocks.withdraw_names();
    names_are_held_.reset();
}

void attached_plug_in::attach_buffer(std::int32_t buflength)
{
    {
        const ending_held until_withdrawn;
        blocks.create_buffer(buflength);
        std::int16_t num = blocks.num();
        check(methods.buffercomopt(num), screen);
        blocks.withdraw_names();
    }
    take_pages(state.blocks.ibuffer.span());
}

std::string attached_plug_in::take_status_text()
{
    std::string text = blocks.text("MainRtstr");
    blocks.set_text("MainRtstr", 0, "");
    return text;
}

}  // namespace tamrix::cli
