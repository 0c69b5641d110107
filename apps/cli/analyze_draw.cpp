// A picture of a recording.
#include "cli/analyze.h"

#include "cli/capture_picture.h"
#include "cli/folders.h"
#include "files/replace_file.h"

#include <algorithm>
#include <string_view>

#include <langinfo.h>
#include <locale.h>

namespace tamrix::cli {

namespace {

constexpr std::int32_t usual_samples_of_file = 600;

/// What the environment says of the terminal's letters.
bool terminal_has_utf8()
{
    const locale_t chosen = ::newlocale(LC_CTYPE_MASK, "", nullptr);
    if (chosen == nullptr) return false;
    const bool utf8 = std::string_view{::nl_langinfo_l(CODESET, chosen)} == "UTF-8";
    ::freelocale(chosen);
    return utf8;
}

}  // namespace

void analyze_draw(const capture_options& options, console& con)
{
    const auto samples = samples_of(options.file, con);
    const auto last = static_cast<std::int32_t>(samples.size()) - 1;
    if (options.from > last) {
        refuse("--from " + std::to_string(options.from) + ": " + options.file + " has the samples 0 to " +
               std::to_string(last));
    }
    const std::int32_t usual = options.out.empty() ? letter_columns : usual_samples_of_file;
    const std::int32_t count = std::min(options.count.value_or(usual), last - options.from + 1);
    const capture_view seen{samples, options.from, count, options.period_us};
    if (options.out.empty()) return con.print(letters_of(seen, terminal_has_utf8()));
    check_folder_of(options.out);
    replace_file(options.out, svg_of(seen));
    con.status(options.out + ": samples " + std::to_string(options.from) + " to " +
               std::to_string(options.from + count - 1) + " of " + options.file);
}

}  // namespace tamrix::cli
