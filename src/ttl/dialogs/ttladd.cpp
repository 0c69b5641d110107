#include "ttl/dialogs/ttladd.h"

#include "base/ascii.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"
#include "ttl/dialogs/vector_grid.h"
#include "ttl/library/library.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace tamrix {

namespace {

/// A whole number, with blanks around it at most.
std::optional<int> whole_number(std::string_view text)
{
    text = ascii::trimmed(text, " ");
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped_at, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stopped_at != end) return std::nullopt;
    return value;
}

}  // namespace

ttladd::ttladd(session& plug_in, ttl_variables& ttl) : plug_in_{plug_in}, ttl_{ttl}
{
    OKButton.on_click = [this] { confirm(); };
}

forms::layout ttladd::arrangement()
{
    using namespace forms;
    return column({fields({Label1, Text1, Label2, Text2}), buttons({OKButton})});
}

void ttladd::on_load()
{
    caption(plug_in_.text(message::new_pattern));
    const caption_line captions[] = {
        {Label1.caption, message::ic_type},
        {Label2.caption, message::pin_numbers},
        {OKButton.caption, message::ok},
    };
    set_captions(plug_in_, captions);
    Text1.tip = plug_in_.text(hint::device_name);
    Text2.tip = plug_in_.text(hint::pin_count);
    Text1.text(ttl_.ttlname);
    Text2.text("");
}

void ttladd::confirm()
{
    const int pins = whole_number(Text2.text()).value_or(0);
    const bool name_is_valid = !Text1.text().empty() && name_fits(Text1.text());
    const bool pins_are_valid = pins % 2 == 0 && pins <= 40 && pins > 0;
    if (!name_is_valid || !pins_are_valid) {
        plug_in_.screen.box({.text = plug_in_.text(message::invalid_input),
                             .title = plug_in_.text(message::new_pattern),
                             .picture = forms::icon::warning});
        return focus(name_is_valid ? Text2 : Text1);
    }
    ttl_.ttlname = Text1.text();
    ttl_.ttlpin = static_cast<std::int16_t>(pins);
    ttl_.ttlvect.store(0, vector_grid::unfilled_row(pins));
    ttl_.ttlcnt = 2;
    accepted_ = true;
    close();
}

}  // namespace tamrix
