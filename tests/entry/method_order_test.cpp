// Hosts that are built already call the methods by their position, so order and signatures are pinned here.
#include "tamrix/clstamrix.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace tamrix {
namespace {

using text = std::string&;
using number = std::int16_t&;
using byte = std::uint8_t&;
using boolean = bool16&;

template <class... Parameters>
using method = reply (Clstamrix::*)(Parameters...);

static_assert(std::is_same_v<decltype(&Clstamrix::readfile0), method<text, number, text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::wfile), method<text, text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::algoparameter0), method<>>);
static_assert(std::is_same_v<decltype(&Clstamrix::analyzer0), method<>>);
static_assert(std::is_same_v<decltype(&Clstamrix::recetwave0), method<boolean>>);
static_assert(std::is_same_v<decltype(&Clstamrix::mnutesttestksm), method<>>);
static_assert(std::is_same_v<decltype(&Clstamrix::mnutestttltest0), method<byte, boolean, text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::mnuEditeditvector0), method<byte, boolean, text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::mnutesteditttllib0), method<byte, boolean, text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::mnutestautofind0), method<text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::warn), method<byte, boolean>>);
static_assert(std::is_same_v<decltype(&Clstamrix::vecttest0), method<byte, byte, byte, boolean>>);
static_assert(std::is_same_v<decltype(&Clstamrix::readpldfile), method<text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::writepldfile), method<text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::readsvffile), method<text, text>>);
static_assert(std::is_same_v<decltype(&Clstamrix::bufcomopt), method<number>>);
static_assert(std::is_same_v<decltype(&Clstamrix::buffercomopt), method<number>>);
static_assert(std::is_same_v<decltype(&Clstamrix::freesharebufferopt), method<>>);

/// Position of a method in the table of virtual functions, from 0. A pointer to a virtual member holds its offset
/// plus 1.
template <class Method>
std::size_t position(Method which)
{
    std::uintptr_t offset = 0;
    std::memcpy(&offset, &which, sizeof offset);
    return (offset - 1) / sizeof(void*);
}

TEST(class_of_the_plug_in, has_its_18_methods_in_their_order)
{
    const std::vector<std::size_t> order{
        position(&Clstamrix::readfile0),
        position(&Clstamrix::wfile),
        position(&Clstamrix::algoparameter0),
        position(&Clstamrix::analyzer0),
        position(&Clstamrix::recetwave0),
        position(&Clstamrix::mnutesttestksm),
        position(&Clstamrix::mnutestttltest0),
        position(&Clstamrix::mnuEditeditvector0),
        position(&Clstamrix::mnutesteditttllib0),
        position(&Clstamrix::mnutestautofind0),
        position(&Clstamrix::warn),
        position(&Clstamrix::vecttest0),
        position(&Clstamrix::readpldfile),
        position(&Clstamrix::writepldfile),
        position(&Clstamrix::readsvffile),
        position(&Clstamrix::bufcomopt),
        position(&Clstamrix::buffercomopt),
        position(&Clstamrix::freesharebufferopt),
    };
    constexpr std::size_t destructors = 2;  // the two before the methods
    ASSERT_EQ(order.size(), 18u);
    for (std::size_t i = 0; i < order.size(); ++i) EXPECT_EQ(order[i], destructors + i) << "method " << i + 1;
}

}  // namespace
}  // namespace tamrix
