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

/// `mapped_bytes` is the size with which a block is created; an existing block is mapped as it is. `count` is the
/// number of elements that a view offers, whatever the block's real size.
struct block_info {
    std::string_view name;
    std::uint32_t mapped_bytes;
    element kind;
    std::uint32_t count;
};

/// The small blocks as line(name, mapped bytes, element, count), in the order in which they are attached. "typeid" is a
/// keyword, so that block is written with an underscore here. `ppin` and `ICnum` ask for less than their views span;
/// intentional: the page granularity of a mapping carries them.
// clang-format off
#define TAMRIX_SMALL_BLOCKS(line)                                                                                      \
    line(ibuf1, 400, byte, 20)                                                                                         \
    line(ubuf1, 400, byte, 20)                                                                                         \
    line(ubuf2, 400, byte, 300)                                                                                        \
    line(ibuf2, 33000, byte, 33000)                                                                                    \
    line(usbpip0readresult, 400, boolean, 2)                                                                            \
    line(usbpip2readresult, 400, byte, 2)                                                                              \
    line(arrybuf, 400, byte, 210)                                                                                      \
    line(prgnote, 400, text, 30)                                                                                       \
    line(prgresult, 400, byte, 3)                                                                                      \
    line(wltbigendbuf, 400, real, 4)                                                                                   \
    line(bvccpin, 40, byte, 4)                                                                                         \
    line(bgndpin, 40, byte, 4)                                                                                         \
    line(bvpppin, 40, byte, 4)                                                                                         \
    line(bvcc, 40, int16, 4)                                                                                           \
    line(bvcch, 40, int16, 4)                                                                                          \
    line(bvpp, 40, int16, 4)                                                                                           \
    line(buflength, 40, int32, 4)                                                                                      \
    line(Language, 40, int32, 4)                                                                                       \
    line(pagelength, 40, int16, 4)                                                                                     \
    line(modeltype, 40, int16, 4)                                                                                      \
    line(wfig, 40, byte, 6)                                                                                            \
    line(chipidtestmode, 40, boolean, 4)                                                                                \
    line(pwte, 40, int32, 4)                                                                                           \
    line(figmode, 40, byte, 4)                                                                                         \
    line(chippin, 40, int16, 4)                                                                                        \
    line(wretry, 40, int16, 4)                                                                                         \
    line(prgmode, 40, byte, 4)                                                                                         \
    line(wordmode, 40, byte, 4)                                                                                        \
    line(woption, 40, byte, 4)                                                                                         \
    line(wautonum, 40, byte, 4)                                                                                        \
    line(tlength, 40, int32, 4)                                                                                        \
    line(compid, 40, int16, 4)                                                                                         \
    line(typeid_, 40, int16, 4)                                                                                        \
    line(wsign, 40, byte, 4)                                                                                           \
    line(buftype, 40, byte, 4)                                                                                         \
    line(autoprg, 40, byte, 11)                                                                                        \
    line(rambknum, 40, byte, 4)                                                                                        \
    line(MainmnuPrg, 400, text, 20)                                                                                    \
    line(MainRtstr, 40, text, 3)                                                                                       \
    line(ubuflg, 40, int16, 3)                                                                                         \
    line(ramlg, 40, int32, 3)                                                                                          \
    line(wlverifyvcc, 40, int32, 3)                                                                                    \
    line(algo, 40, text, 4)                                                                                            \
    line(figvol, 40, byte, 4)                                                                                          \
    line(wwarnno, 40, byte, 4)                                                                                         \
    line(spdter, 40, text, 4)                                                                                          \
    line(menu, 40, byte, 14)                                                                                           \
    line(order, 400, byte, 10)                                                                                         \
    line(pintestmap, 40, text, 3)                                                                                      \
    line(wordmode0, 40, byte, 3)                                                                                       \
    line(ppin, 40, text, 13)                                                                                           \
    line(serial, 40, int32, 3)                                                                                         \
    line(typeformat, 40, byte, 3)                                                                                      \
    line(ICnum, 40, byte, 80)                                                                                          \
    line(wcompany, 40, text, 4)                                                                                        \
    line(wtype, 40, text, 3)                                                                                           \
    line(usbable, 40, boolean, 10)                                                                                      \
    line(algorithm, 40, text, 4)                                                                                       \
    line(selmode, 40, byte, 3)                                                                                         \
    line(algobuf, 131072, byte, 131072)

/// The big blocks. The size and the count of `ibuffer` follow from buflength(0), see ibuffer_bytes.
#define TAMRIX_BIG_BLOCKS(line) \
    line(ibuffer, 0, byte, 0)   \
    line(ibuffer66, 40, byte, 15)
// clang-format on

/// The name of a block as it is in the lists above.
constexpr std::string_view block_name(std::string_view listed)
{
    return listed.ends_with('_') ? listed.substr(0, listed.size() - 1) : listed;
}

#define TAMRIX_BLOCK_INFO(name, mapped_bytes, kind, count) {block_name(#name), mapped_bytes, element::kind, count},
inline constexpr std::array<block_info, 60> small_blocks{{TAMRIX_SMALL_BLOCKS(TAMRIX_BLOCK_INFO)}};
inline constexpr std::array<block_info, 2> big_blocks{{TAMRIX_BIG_BLOCKS(TAMRIX_BLOCK_INFO)}};
#undef TAMRIX_BLOCK_INFO

/// The object name of a small block of instance `num`: it ends with the number.
inline std::string small_block_object(std::string_view name, int num)
{
    return "qorfan" + std::string{name} + std::to_string(num);
}

/// The object name of a big block. It has no number: all instances share the block.
inline std::string big_block_object(std::string_view name) { return "qorfan" + std::string{name}; }

/// Mapped bytes of `ibuffer` for a buffer of `buflength` bytes. Intentional: the two constants differ. A length from
/// 0x8400000 to 0x107FFFFF is mapped whole, with its margin; from 0x10800000 on, the mapping has the fixed size.
constexpr std::int32_t ibuffer_bytes(std::int32_t buflength)
{
    constexpr std::int32_t margin = 2200;
    return buflength < 0x10800000 ? buflength + margin : 0x8400000 + margin;
}

}  // namespace tamrix
