#include "ttl/dialogs/ttlautotest.h"

#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"

namespace tamrix {

namespace {

constexpr const char* families = "54/74XXX\n"
                                 "54/74FXXX\n"
                                 "54/74SXXX\n"
                                 "54/74ASXXX\n"
                                 "54/74HCXXX\n"
                                 "54/74LSXXX\n"
                                 "54/74ALSXXX\n"
                                 "54/74HCTXXX\n"
                                 "54/74HCUXXX";
constexpr int number_of_families = 9;

}  // namespace

ttlautotest::ttlautotest(session& plug_in, const ttl_variables& ttl) : plug_in_{plug_in}, ttl_{ttl}
{
    Text1.page_rows = number_of_families;
    Text1.locked = true;
    Text1.text(families);
    OKButton.on_click = [this] { close(); };
}

forms::layout ttlautotest::arrangement()
{
    using namespace forms;
    return column({
        stretched(row({stretched(column({Label2, stretched(List1)})), column({Label1, stretched(Text1)})})),
        buttons({OKButton}),
    });
}

void ttlautotest::on_load()
{
    caption(plug_in_.text(message::auto_find_device_result));
    const caption_line captions[] = {
        {Label2.caption, message::device_could_be},
        {Label1.caption, message::families_74},
        {OKButton.caption, message::ok},
    };
    set_captions(plug_in_, captions);
    List1.items(ttl_.hits);
    focus(OKButton);
}

}  // namespace tamrix
