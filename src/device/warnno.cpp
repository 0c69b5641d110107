#include "device/warnno.h"

#include "channel/model.h"
#include "device/note_text.h"
#include "messages/message_numbers.h"
#include "session/session.h"

namespace tamrix {

namespace {

constexpr std::uint8_t generation_17 = 17;

/// The line for the host's log.
std::string add_power_line(session& plug_in)
{
    std::string line = ">>" + plug_in.text(message::note) + plug_in.text(message::needs_ac_adaptor) + "\n";
    plug_in.blocks.MainRtstr(0) += line;
    return line;
}

/// True where a programmer is there that needs the external supply for such a device.
bool needs_power(const sharemap& blocks, bool16 ok, bool16 extpower0)
{
    return extpower0 == 0 && is_true(ok) && blocks.wfig(1) == generation_17 && is_true(blocks.usbable(0));
}

/// Addresses of the auxiliary memory; 0 for a value without a meaning.
std::int64_t auxiliary_length(std::uint8_t option)
{
    constexpr std::int64_t lengths[] = {0x8000, 0x80, 0x40, 0x100, 0x800, 0x200, 0x8000};
    return option < std::size(lengths) ? lengths[option] : 0;
}

notes::device_values values_of(const sharemap& blocks)
{
    notes::device_values values{};
    values[notes::total_length] = blocks.tlength(0);
    values[notes::page_length] = blocks.pagelength(0);
    values[notes::vcc_high] = blocks.bvcch(0);
    values[notes::option_0] = blocks.woption(0);
    values[notes::option_3] = blocks.woption(3);
    values[notes::auxiliary] = auxiliary_length(blocks.woption(1));
    return values;
}

/// An option of a device with note 4 says that its memory lies as for note 2.
std::uint8_t number_of_table(const session& plug_in, std::uint8_t no)
{
    return no == 4 && plug_in.blocks.woption(3) != 0 ? 2 : no;
}

/// The supply is lowered whether or not the external one is needed.
void lower_vcc(sharemap& blocks)
{
    constexpr std::int16_t asked = 390, lowered = 360;  // in 0.01 V
    if (blocks.bvcc(0) == asked && blocks.wfig(1) == generation_17) blocks.bvcc(0) = lowered;
}

}  // namespace

void warn(session& plug_in, bool16 ok, std::uint8_t& no, bool16 extpower0)
{
    constexpr std::uint8_t power_bit = 0x80;
    if (hw::model_of(plug_in.blocks.modeltype(0)).adaptor_note && (no & power_bit) != 0 && extpower0 == 0) {
        add_power_line(plug_in);
    }
    no &= static_cast<std::uint8_t>(~power_bit);
    if (no == 20) lower_vcc(plug_in.blocks);
    std::string power_line;
    if ((no == 19 || no == 20 || no == 21) && needs_power(plug_in.blocks, ok, extpower0))
        power_line = add_power_line(plug_in);
    const notes::note* const shown = notes::find_note(number_of_table(plug_in, no));
    if (shown == nullptr) return;
    // Intentional: a note that added the power line has it as its title too.
    const forms::box_table table =
        notes::words_of(*shown, values_of(plug_in.blocks), [&](int number) { return plug_in.text(number); });
    plug_in.screen.box({.text = forms::plain_text(table),
                        .title = power_line.empty() ? plug_in.text(message::note) : power_line,
                        .picture = forms::icon::information,
                        .table = table});
}

}  // namespace tamrix
