#include "sim/windows/operations.h"

#include <tuple>
#include <type_traits>
#include <utility>

#include <oleauto.h>

namespace tamrix::sim {

namespace {

/// By value or by reference, in whatever type it comes.
HRESULT take(const VARIANTARG& given, VARTYPE type, VARIANT& value)
{
    if ((given.vt & VT_BYREF) != 0 && given.byref == nullptr) return E_POINTER;
    ::VariantInit(&value);
    HRESULT failed = ::VariantCopyInd(&value, const_cast<VARIANTARG*>(&given));  // only reads it
    if (SUCCEEDED(failed)) failed = ::VariantChangeType(&value, &value, 0, type);
    if (FAILED(failed)) ::VariantClear(&value);
    return failed;
}

HRESULT take_number(const VARIANTARG& given, std::int32_t& number)
{
    VARIANT value;
    const HRESULT failed = take(given, VT_I4, value);
    if (SUCCEEDED(failed)) number = value.lVal;
    return failed;
}

HRESULT take_number(const VARIANTARG& given, std::uint8_t& number)
{
    VARIANT value;
    const HRESULT failed = take(given, VT_UI1, value);
    if (SUCCEEDED(failed)) number = value.bVal;
    return failed;
}

void put(std::int32_t number, VARIANT& result)
{
    result.vt = VT_I4;
    result.lVal = number;
}

void put(bool yes, VARIANT& result)
{
    result.vt = VT_BOOL;
    result.boolVal = yes ? VARIANT_TRUE : VARIANT_FALSE;
}

using variants = std::span<const VARIANTARG* const>;

template <auto method>
struct automated;

template <class Result, class... Taken, Result (hw::devobj::*method)(Taken...)>
struct automated<method> {
    static HRESULT carry_out(hw::devobj& device, variants arguments, VARIANT& result)
    {
        std::tuple<Taken...> taken;
        const HRESULT failed = take_all(arguments, taken, std::index_sequence_for<Taken...>{});
        if (FAILED(failed)) return failed;
        const auto call = [&](Taken... each) { return (device.*method)(each...); };
        if constexpr (std::is_void_v<Result>) {
            std::apply(call, taken);
        } else {
            put(std::apply(call, taken), result);
        }
        return S_OK;
    }
    template <std::size_t... place>
    static HRESULT take_all([[maybe_unused]] variants arguments, [[maybe_unused]] std::tuple<Taken...>& into,
                            std::index_sequence<place...>)
    {
        HRESULT failed = S_OK;
        (void)(... && SUCCEEDED(failed = take_number(*arguments[place], std::get<place>(into))));
        return failed;
    }
    static constexpr operation named(const wchar_t* name) { return {name, carry_out, sizeof...(Taken)}; }
};

using device = hw::devobj;

constexpr operation all[] = {
    automated<&device::setvcc>::named(L"setvcc"),       automated<&device::setvpp>::named(L"setvpp"),
    automated<&device::gndpin>::named(L"gndpin"),       automated<&device::vccpin>::named(L"vccpin"),
    automated<&device::vpppin>::named(L"vpppin"),       automated<&device::busmode>::named(L"busmode"),
    automated<&device::hwinit>::named(L"hwinit"),       automated<&device::hwreset>::named(L"hwreset"),
    automated<&device::ctlout>::named(L"ctlout"),       automated<&device::ctlin>::named(L"ctlin"),
    automated<&device::regout>::named(L"regout"),       automated<&device::regin>::named(L"regin"),
    automated<&device::delayms>::named(L"delayms"),     automated<&device::delayus>::named(L"delayus"),
    automated<&device::replywait>::named(L"replywait"), automated<&device::vecout>::named(L"vecout"),
    automated<&device::vecstart>::named(L"vecstart"),   automated<&device::vecbyte>::named(L"vecbyte"),
    automated<&device::vecdelay>::named(L"vecdelay"),   automated<&device::vecdelay2>::named(L"vecdelay2"),
    automated<&device::vecgnd>::named(L"vecgnd"),       automated<&device::vecvcc>::named(L"vecvcc"),
    automated<&device::vecvpp>::named(L"vecvpp"),       automated<&device::replycheck>::named(L"replycheck"),
    automated<&device::hwrelease>::named(L"hwrelease"), automated<&device::hwfault>::named(L"hwfault"),
    automated<&device::boardsel>::named(L"boardsel"),   automated<&device::boardsel2>::named(L"boardsel2")};

}  // namespace

std::span<const operation> operations() { return all; }

}  // namespace tamrix::sim
