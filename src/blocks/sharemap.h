// Attaches the 62 shared blocks and gives every other module a typed view of each, named after its block.
#pragma once

#include "blocks/block.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace tamrix {

class sharemap {
public:
    /// `name_space` is put before every object name; `on_failure` is called once for each block that can be neither
    /// opened nor created.
    sharemap(std::string name_space, std::function<void()> on_failure);

    /// Attaches the small blocks of instance `num` in table order. A block that fails does not stop the later ones.
    void attachsmall(std::int16_t num);
    /// Attaches `ibuffer` with `size` bytes, then `ibuffer66`.
    void attachbig(std::int32_t size);
    /// Releases `ibuffer`, then `ibuffer66`.
    void releasebig();
    /// The small blocks in attach order.
    std::array<block_base*, 60> small();

    block<std::uint8_t> ibuf1{block_line("ibuf1")};
    block<std::uint8_t> ubuf1{block_line("ubuf1")};
    block<std::uint8_t> ubuf2{block_line("ubuf2")};
    block<std::uint8_t> ibuf2{block_line("ibuf2")};
    block<bool16> usbpip0readresult{block_line("usbpip0readresult")};
    block<std::uint8_t> usbpip2readresult{block_line("usbpip2readresult")};
    block<std::uint8_t> arrybuf{block_line("arrybuf")};
    text_block prgnote{block_line("prgnote")};
    block<std::uint8_t> prgresult{block_line("prgresult")};
    block<double> wltbigendbuf{block_line("wltbigendbuf")};
    block<std::uint8_t> bvccpin{block_line("bvccpin")};
    block<std::uint8_t> bgndpin{block_line("bgndpin")};
    block<std::uint8_t> bvpppin{block_line("bvpppin")};
    block<std::int16_t> bvcc{block_line("bvcc")};
    block<std::int16_t> bvcch{block_line("bvcch")};
    block<std::int16_t> bvpp{block_line("bvpp")};
    block<std::int32_t> buflength{block_line("buflength")};
    block<std::int32_t> Language{block_line("Language")};
    block<std::int16_t> pagelength{block_line("pagelength")};
    block<std::int16_t> modeltype{block_line("modeltype")};
    block<std::uint8_t> wfig{block_line("wfig")};
    block<bool16> chipidtestmode{block_line("chipidtestmode")};
    block<std::int32_t> pwte{block_line("pwte")};
    block<std::uint8_t> figmode{block_line("figmode")};
    block<std::int16_t> chippin{block_line("chippin")};
    block<std::int16_t> wretry{block_line("wretry")};
    block<std::uint8_t> prgmode{block_line("prgmode")};
    block<std::uint8_t> wordmode{block_line("wordmode")};
    block<std::uint8_t> woption{block_line("woption")};
    block<std::uint8_t> wautonum{block_line("wautonum")};
    block<std::int32_t> tlength{block_line("tlength")};
    block<std::int16_t> compid{block_line("compid")};
    block<std::int16_t> typeid_{block_line("typeid")};  // "typeid" itself is a keyword
    block<std::uint8_t> wsign{block_line("wsign")};
    block<std::uint8_t> buftype{block_line("buftype")};
    block<std::uint8_t> autoprg{block_line("autoprg")};
    block<std::uint8_t> rambknum{block_line("rambknum")};
    text_block MainmnuPrg{block_line("MainmnuPrg")};
    text_block MainRtstr{block_line("MainRtstr")};
    block<std::int16_t> ubuflg{block_line("ubuflg")};
    block<std::int32_t> ramlg{block_line("ramlg")};
    block<std::int32_t> wlverifyvcc{block_line("wlverifyvcc")};
    text_block algo{block_line("algo")};
    block<std::uint8_t> figvol{block_line("figvol")};
    block<std::uint8_t> wwarnno{block_line("wwarnno")};
    text_block spdter{block_line("spdter")};
    block<std::uint8_t> menu{block_line("menu")};
    block<std::uint8_t> order{block_line("order")};
    text_block pintestmap{block_line("pintestmap")};
    block<std::uint8_t> wordmode0{block_line("wordmode0")};
    text_block ppin{block_line("ppin")};
    block<std::int32_t> serial{block_line("serial")};
    block<std::uint8_t> typeformat{block_line("typeformat")};
    block<std::uint8_t> ICnum{block_line("ICnum")};
    text_block wcompany{block_line("wcompany")};
    text_block wtype{block_line("wtype")};
    block<bool16> usbable{block_line("usbable")};
    text_block algorithm{block_line("algorithm")};
    block<std::uint8_t> selmode{block_line("selmode")};
    block<std::uint8_t> algobuf{block_line("algobuf")};

    block<std::uint8_t> ibuffer{block_line("ibuffer")};
    block<std::uint8_t> ibuffer66{block_line("ibuffer66")};

private:
    void attach(block_base& view, const std::string& object, std::int32_t mapped_bytes, std::uint32_t count);

    std::string name_space_;
    std::function<void()> on_failure_;
};

}  // namespace tamrix
