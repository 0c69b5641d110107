#include "pld/svf.h"

#include "files/file_guard.h"
#include "files/text_lines.h"
#include "files/text_output.h"

namespace tamrix {

std::int16_t read_svf(diagnostic& why_it_failed, const std::string& fname, const std::string& syspath)
{
    std::int16_t result = 0;
    guard_file(why_it_failed, fname, [&] {
        text_lines lines{fname};
        if (lines.file_length() == 0) {
            result = 1;
            return;
        }
        text_output copy{syspath + "pldtmp.svf"};
        while (const auto line = lines.next()) copy.line(*line);
        copy.close();
    });
    return result;
}

}  // namespace tamrix
