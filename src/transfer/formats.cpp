#include "transfer/formats.h"

#include "transfer/file_io.h"
#include "transfer/rwfile/binary.h"
#include "transfer/rwfile/intel.h"
#include "transfer/rwfile/motorola.h"
#include "transfer/rwfile/tektronix.h"

#include <array>
#include <vector>

namespace tamrix {

std::span<const format, 8> formats()
{
    static constexpr std::array<format, 8> table{{
        {"binary", {}, 1126, "bin rom img", detect_binary, read_binary, write_binary, measure_binary},
        {"intel", "Intel", 0, "hex ihx ihex h86", detect_intel, read_intel, write_intel, measure_intel},
        {"motorola", "Motorola S", 0, "s19 s28 s37 srec mot", nullptr, nullptr, write_motorola, nullptr},
        {"tektronix", "Tektronix", 0, "tek", nullptr, nullptr, write_tektronix, nullptr},
        {"holtek", "Holtek", 0, "otp mtp", nullptr, nullptr, nullptr, nullptr},
        {"emc", "EMC(.CDS)", 0, "cds", nullptr, nullptr, nullptr, nullptr},
        {"intel16", "Intel Hex16", 0, "hex", nullptr, nullptr, nullptr, nullptr},
        {"texas", "Texas Instrument", 0, "txt", nullptr, nullptr, nullptr, nullptr},
    }};
    return table;
}

std::string caption_of(const format& which, const session& plug_in)
{
    return which.caption_message != 0 ? plug_in.text(which.caption_message) : std::string{which.caption};
}

detected_format detect_format(const std::string& path)
{
    input_file file{path};
    std::vector<std::uint8_t> head(detection_head_bytes);
    head.resize(file.read_at(0, head));
    detected_format best{0, detection::no};
    for (int index = 0; const format& candidate : formats()) {
        const detection certainty = candidate.detect != nullptr ? candidate.detect(head) : detection::no;
        if (certainty > best.certainty) best = {index, certainty};
        ++index;
    }
    return best;
}

}  // namespace tamrix
