#include "cli/detect.h"

#include "files/file_io.h"
#include "formats/formats.h"
#include "pld/detect.h"

namespace tamrix::cli {

void detect(const std::vector<std::string>& files, console& con)
{
    int unread = 0;
    for (const std::string& file : files) {
        try {
            const pld_format logic = detect_pld_format(file);
            if (logic != pld_format::none) {
                con.line(file + ": - " + (logic == pld_format::jedec ? "jedec" : "svf"));
                continue;
            }
            const detected_format found = detect_format(file);
            const format& which = formats()[static_cast<std::size_t>(found.index)];
            con.line(file + ": " + std::to_string(found.index) + " " + std::string{which.name} +
                     (found.certainty == detection::damaged ? " (damaged)" : ""));
        } catch (const file_error& error) {
            con.error(error.what());
            ++unread;
        }
    }
    if (unread != 0) throw command_error{exit_failed, ""};  // each has been reported
}

}  // namespace tamrix::cli
