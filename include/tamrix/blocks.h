// The 62 shared blocks: names, mapped sizes, element types and counts, in the order in which they are attached.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

enum class element : std::uint8_t { byte, int16, int32, boolean, real, text };

/// Bytes of one element; a text element is a 32-bit handle.
constexpr std::uint32_t element_bytes(element kind)
{
    switch (kind) {
    case element::byte: return 1;
    case element::int16:
    case element::boolean: return 2;
    case element::int32:
    case element::text: return 4;
    case element::real: return 8;
    }
    return 0;
}

/// `mapped_bytes` is what the side that creates the block asks for; a block that exists is mapped as it stands. `count`
/// is the number of elements that a view offers, whatever the block's real size.
struct block_info {
    std::string_view name;
    std::uint32_t mapped_bytes;
    element kind;
    std::uint32_t count;
};

// `ppin` and `ICnum` ask for less than their views span. It is meant: the page granularity of a mapping carries them.
inline constexpr std::array<block_info, 60> small_blocks{{
    {"ibuf1", 400, element::byte, 20},
    {"ubuf1", 400, element::byte, 20},
    {"ubuf2", 400, element::byte, 300},
    {"ibuf2", 33000, element::byte, 33000},
    {"usbpip0readresult", 400, element::boolean, 2},
    {"usbpip2readresult", 400, element::byte, 2},
    {"arrybuf", 400, element::byte, 210},
    {"prgnote", 400, element::text, 30},
    {"prgresult", 400, element::byte, 3},
    {"wltbigendbuf", 400, element::real, 4},
    {"bvccpin", 40, element::byte, 4},
    {"bgndpin", 40, element::byte, 4},
    {"bvpppin", 40, element::byte, 4},
    {"bvcc", 40, element::int16, 4},
    {"bvcch", 40, element::int16, 4},
    {"bvpp", 40, element::int16, 4},
    {"buflength", 40, element::int32, 4},
    {"Language", 40, element::int32, 4},
    {"pagelength", 40, element::int16, 4},
    {"modeltype", 40, element::int16, 4},
    {"wfig", 40, element::byte, 6},
    {"chipidtestmode", 40, element::boolean, 4},
    {"pwte", 40, element::int32, 4},
    {"figmode", 40, element::byte, 4},
    {"chippin", 40, element::int16, 4},
    {"wretry", 40, element::int16, 4},
    {"prgmode", 40, element::byte, 4},
    {"wordmode", 40, element::byte, 4},
    {"woption", 40, element::byte, 4},
    {"wautonum", 40, element::byte, 4},
    {"tlength", 40, element::int32, 4},
    {"compid", 40, element::int16, 4},
    {"typeid", 40, element::int16, 4},
    {"wsign", 40, element::byte, 4},
    {"buftype", 40, element::byte, 4},
    {"autoprg", 40, element::byte, 11},
    {"rambknum", 40, element::byte, 4},
    {"MainmnuPrg", 400, element::text, 20},
    {"MainRtstr", 40, element::text, 3},
    {"ubuflg", 40, element::int16, 3},
    {"ramlg", 40, element::int32, 3},
    {"wlverifyvcc", 40, element::int32, 3},
    {"algo", 40, element::text, 4},
    {"figvol", 40, element::byte, 4},
    {"wwarnno", 40, element::byte, 4},
    {"spdter", 40, element::text, 4},
    {"menu", 40, element::byte, 14},
    {"order", 400, element::byte, 10},
    {"pintestmap", 40, element::text, 3},
    {"wordmode0", 40, element::byte, 3},
    {"ppin", 40, element::text, 13},
    {"serial", 40, element::int32, 3},
    {"typeformat", 40, element::byte, 3},
    {"ICnum", 40, element::byte, 80},
    {"wcompany", 40, element::text, 4},
    {"wtype", 40, element::text, 3},
    {"usbable", 40, element::boolean, 10},
    {"algorithm", 40, element::text, 4},
    {"selmode", 40, element::byte, 3},
    {"algobuf", 131072, element::byte, 131072},
}};

// The size and the count of `ibuffer` follow from buflength(0), see ibuffer_bytes.
inline constexpr std::array<block_info, 2> big_blocks{{
    {"ibuffer", 0, element::byte, 0},
    {"ibuffer66", 40, element::byte, 15},
}};

/// The object name of a small block of instance `num`: the number stands at the end.
inline std::string small_block_object(std::string_view name, int num)
{
    return "qorfan" + std::string{name} + std::to_string(num);
}

/// The object name of a big block: without a number, all instances share it.
inline std::string big_block_object(std::string_view name) { return "qorfan" + std::string{name}; }

/// Mapped bytes of `ibuffer` for a buffer of `buflength` bytes. The two constants differ on purpose: a length from
/// 0x8400000 to 0x107FFFFF is mapped whole with its margin, only from 0x10800000 on the mapping falls back to the fixed
/// size.
constexpr std::int32_t ibuffer_bytes(std::int32_t buflength)
{
    constexpr std::int32_t margin = 2200;
    return buflength < 0x10800000 ? buflength + margin : 0x8400000 + margin;
}

}  // namespace tamrix
