#include "ttl/run/row_report.h"

#include "messages/message_numbers.h"
#include "session/session.h"

#include <cstdio>

namespace tamrix {

namespace {

std::string four_digits(int number)
{
    char text[16];
    std::snprintf(text, sizeof text, "%04d", number);
    return text;
}

}  // namespace

row_lines lines_of(const session& plug_in, const failed_row& failed)
{
    const std::string number = four_digits(failed.number) + ":";
    return {plug_in.text(message::expected_row) + number + failed.row,
            plug_in.text(message::result_row) + number + failed.result};
}

after_report report_failed_row(session& plug_in, std::uint8_t logmode, const failed_row& failed,
                               std::string_view indent)
{
    const auto [expected, result] = lines_of(plug_in, failed);
    if (logmode != 0) {
        plug_in.blocks.MainRtstr(0) += ">> " + expected + "\n>> " + result + "\n\n";
        return after_report::go_on;
    }
    const forms::box_table table{.rows = {forms::row_of(expected), forms::row_of(std::string{indent} + result)},
                                 .closing = plug_in.text(message::ttl_and_cmos_test) + plug_in.text(message::fail),
                                 .letters = true};
    const forms::answer answer = plug_in.screen.box({.text = forms::plain_text(table),
                                                     .title = plug_in.text(message::warning),
                                                     .picture = forms::icon::error,
                                                     .buttons = forms::buttons_of_box::abort_retry_ignore,
                                                     .table = table});
    switch (answer) {
    case forms::answer::retry: return after_report::start_again;
    case forms::answer::ignore: return after_report::forgive;
    default: return after_report::end_as_failed;
    }
}

void tell_communication_error(session& plug_in, int title)
{
    plug_in.screen.box({.text = plug_in.text(message::communication_error),
                        .title = plug_in.text(title),
                        .picture = forms::icon::information});
}

}  // namespace tamrix
