// The device object of a host's installation: an automation object, called by name.
#pragma once

#include "programmer/devobj.h"

#include <map>
#include <string>
#include <string_view>
#include <type_traits>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::hw {

/// COM must be initialised on the thread that makes it, and only that thread may call it.
class device_object final : public devobj {
public:
    /// `class_name` is a ProgID or a class identifier in braces. Throws programmer_error.
    explicit device_object(std::string class_name);

private:
    template <class Result>
    auto operation(const wchar_t* name)
    {
        return [this, name](auto... given) {
            constexpr result wanted = std::is_void_v<Result> ? result::ignored : result::number;
            return static_cast<Result>(send(name, wanted, given...));
        };
    }

    enum class result { ignored, number };

    /// Every argument goes by reference, the last one first.
    template <class... Given>
    std::int32_t send(const wchar_t* name, result wanted, Given&... given)
    {
        constexpr UINT count = sizeof...(given);
        VARIANTARG references[count + 1]{};
        [[maybe_unused]] UINT place = count;
        ((references[--place] = reference_to(given)), ...);
        return invoke(name, wanted, references, count);
    }
    static VARIANTARG reference_to(std::int32_t& number) { return reference(VT_I4, &number); }
    static VARIANTARG reference_to(std::uint8_t& number) { return reference(VT_UI1, &number); }
    static VARIANTARG reference(VARTYPE type, void* number);

    std::int32_t invoke(const wchar_t* name, result wanted, VARIANTARG* arguments, UINT count);
    DISPID id_of(const wchar_t* name);
    [[noreturn]] void fail(const wchar_t* operation, const std::string& why) const;

    std::string class_name_;
    /// Never released: it lives as long as the library, and COM ends before that.
    IDispatch* object_ = nullptr;
    std::map<std::wstring_view, DISPID> ids_;

public:
#define TAMRIX_OPERATION(result, name, parameters, arguments)                                                          \
    result name parameters override { return operation<result>(L"" #name) arguments; }
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)
#undef TAMRIX_OPERATION
};

}  // namespace tamrix::hw
