// The shared blocks as host and plug-in agreed on them, written down a second time for the tests.
#pragma once

#include <string_view>

namespace tamrix::tests {

struct expected_block {
    std::string_view name;
    unsigned mapped_bytes;
    std::string_view element;
    unsigned count;
};

inline constexpr expected_block expected_small_blocks[] = {
    {"ibuf1", 400, "unsigned byte", 20},
    {"ubuf1", 400, "unsigned byte", 20},
    {"ubuf2", 400, "unsigned byte", 300},
    {"ibuf2", 33000, "unsigned byte", 33000},
    {"usbpip0readresult", 400, "16-bit boolean", 2},
    {"usbpip2readresult", 400, "unsigned byte", 2},
    {"arrybuf", 400, "unsigned byte", 210},
    {"prgnote", 400, "text", 30},
    {"prgresult", 400, "unsigned byte", 3},
    {"wltbigendbuf", 400, "double", 4},
    {"bvccpin", 40, "unsigned byte", 4},
    {"bgndpin", 40, "unsigned byte", 4},
    {"bvpppin", 40, "unsigned byte", 4},
    {"bvcc", 40, "16-bit signed integer", 4},
    {"bvcch", 40, "16-bit signed integer", 4},
    {"bvpp", 40, "16-bit signed integer", 4},
    {"buflength", 40, "32-bit signed integer", 4},
    {"Language", 40, "32-bit signed integer", 4},
    {"pagelength", 40, "16-bit signed integer", 4},
    {"modeltype", 40, "16-bit signed integer", 4},
    {"wfig", 40, "unsigned byte", 6},
    {"chipidtestmode", 40, "16-bit boolean", 4},
    {"pwte", 40, "32-bit signed integer", 4},
    {"figmode", 40, "unsigned byte", 4},
    {"chippin", 40, "16-bit signed integer", 4},
    {"wretry", 40, "16-bit signed integer", 4},
    {"prgmode", 40, "unsigned byte", 4},
    {"wordmode", 40, "unsigned byte", 4},
    {"woption", 40, "unsigned byte", 4},
    {"wautonum", 40, "unsigned byte", 4},
    {"tlength", 40, "32-bit signed integer", 4},
    {"compid", 40, "16-bit signed integer", 4},
    {"typeid", 40, "16-bit signed integer", 4},
    {"wsign", 40, "unsigned byte", 4},
    {"buftype", 40, "unsigned byte", 4},
    {"autoprg", 40, "unsigned byte", 11},
    {"rambknum", 40, "unsigned byte", 4},
    {"MainmnuPrg", 400, "text", 20},
    {"MainRtstr", 40, "text", 3},
    {"ubuflg", 40, "16-bit signed integer", 3},
    {"ramlg", 40, "32-bit signed integer", 3},
    {"wlverifyvcc", 40, "32-bit signed integer", 3},
    {"algo", 40, "text", 4},
    {"figvol", 40, "unsigned byte", 4},
    {"wwarnno", 40, "unsigned byte", 4},
    {"spdter", 40, "text", 4},
    {"menu", 40, "unsigned byte", 14},
    {"order", 400, "unsigned byte", 10},
    {"pintestmap", 40, "text", 3},
    {"wordmode0", 40, "unsigned byte", 3},
    {"ppin", 40, "text", 13},
    {"serial", 40, "32-bit signed integer", 3},
    {"typeformat", 40, "unsigned byte", 3},
    {"ICnum", 40, "unsigned byte", 80},
    {"wcompany", 40, "text", 4},
    {"wtype", 40, "text", 3},
    {"usbable", 40, "16-bit boolean", 10},
    {"algorithm", 40, "text", 4},
    {"selmode", 40, "unsigned byte", 3},
    {"algobuf", 131072, "unsigned byte", 131072},
};

/// Bytes of one element of this description.
constexpr unsigned bytes_of_element(std::string_view element)
{
    if (element == "unsigned byte") return 1;
    if (element == "16-bit signed integer" || element == "16-bit boolean") return 2;
    if (element == "double") return 8;
    return 4;
}

}  // namespace tamrix::tests
