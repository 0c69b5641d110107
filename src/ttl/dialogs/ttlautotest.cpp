#include "ttl/dialogs/ttlautotest.h"

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
    caption(plug_in_.text(1183));
    Label2.caption = plug_in_.text(1184);
    Label1.caption = plug_in_.text(1185);
    OKButton.caption = plug_in_.text(1067);
    List1.items(ttl_.hits);
    focus(OKButton);
}

}  // namespace tamrix
