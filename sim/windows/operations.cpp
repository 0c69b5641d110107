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

#define TAMRIX_OPERATION(result, name, parameters, arguments) automated<&hw::devobj::name>::named(L"" #name),
constexpr operation all[] = {TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)};
#undef TAMRIX_OPERATION

}  // namespace

std::span<const operation> operations() { return all; }

}  // namespace tamrix::sim
