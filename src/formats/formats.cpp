#include "formats/formats.h"

#include "base/ascii.h"
#include "base/native_path.h"
#include "files/file_io.h"
#include "formats/binary.h"
#include "formats/emc.h"
#include "formats/holtek.h"
#include "formats/intel.h"
#include "formats/intel16.h"
#include "formats/motorola.h"
#include "formats/tektronix.h"
#include "formats/texas.h"
#include "messages/message_numbers.h"
#include "session/session.h"

#include <array>

namespace tamrix {

std::span<const format> formats()
{
    static constexpr auto table = std::to_array<format>({
        {"binary", {}, message::binary, "bin rom img", detect_binary, read_binary, write_binary, measure_binary},
        {"intel", "Intel", 0, "hex ihx ihex h86", detect_intel, read_intel, write_intel, measure_intel, estimate_intel},
        {"motorola", "Motorola S", 0, "s19 s28 s37 srec mot", detect_motorola, read_motorola, write_motorola,
         measure_motorola, estimate_motorola},
        {"tektronix", "Tektronix", 0, "tek", detect_tektronix, read_tektronix, write_tektronix, measure_tektronix},
        {"holtek", "Holtek", 0, "otp mtp", detect_holtek, read_holtek, nullptr, measure_holtek},
        {"emc", "EMC(.CDS)", 0, "cds", detect_emc, read_emc, nullptr, measure_emc},
        {"intel16", "Intel Hex16", 0, "hex", detect_intel16, read_intel16, nullptr, measure_intel16, nullptr, 2},
        {"texas", "Texas Instrument", 0, "txt", detect_texas, read_texas, nullptr, measure_texas},
    });
    return table;
}

std::vector<const format*> save_formats(std::span<const format> all)
{
    std::vector<const format*> found;
    for (const format& one : all) {
        if (one.write != nullptr) found.push_back(&one);
    }
    return found;
}

std::string caption_of(const format& which, const session& plug_in)
{
    return which.caption_message != 0 ? plug_in.text(which.caption_message) : std::string{which.caption};
}

bool has_extension(const format& which, const std::string& path)
{
    const std::string native = native_path(path);
    const auto point = native.find_last_of("./");
    if (point == std::string::npos || native[point] == '/' || point + 1 == native.size()) return false;
    return (" " + std::string{which.extensions} + " ").find(" " + ascii::lowered(native.substr(point + 1)) + " ") !=
           std::string::npos;
}

detected_format detect_format(const std::string& path)
{
    input_file file{path};
    std::vector<std::uint8_t> head(detection_head_bytes);
    head.resize(file.read_at(0, head));
    return detect_format({head, file.length()}, path);
}

detected_format detect_format(const file_start& file, const std::string& path)
{
    detected_format best{0, detection::no};
    for (int index = 0; const format& candidate : formats()) {
        const detection certainty = candidate.detect(file);
        const bool named = certainty == best.certainty && certainty != detection::no &&
                           has_extension(candidate, path) &&
                           !has_extension(formats()[static_cast<std::size_t>(best.index)], path);
        if (certainty > best.certainty || named) best = {index, certainty};
        ++index;
    }
    return best;
}

}  // namespace tamrix
