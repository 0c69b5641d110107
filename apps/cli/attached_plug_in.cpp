#include "cli/attached_plug_in.h"

#include "cli/console.h"

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

}  // namespace

attached_plug_in::attached_plug_in(std::int32_t language)
    : blocks{own_name_space(), 0, {tamrix_text_new, tamrix_text_get, tamrix_text_free}}, state{screen, own_name_space()}
{
    blocks.value<std::int32_t>("Language") = language;
    std::int16_t num = blocks.num();
    check(methods.bufcomopt(num), screen);
}

void attached_plug_in::attach_buffer(std::int32_t buflength)
{
    blocks.create_buffer(buflength);
    std::int16_t num = blocks.num();
    check(methods.buffercomopt(num), screen);
    blocks.withdraw_names();
}

std::string attached_plug_in::take_status_text()
{
    std::string text = blocks.text("MainRtstr");
    blocks.set_text("MainRtstr", 0, "");
    return text;
}

}  // namespace tamrix::cli
