// The device object of a host's installation: an automation object, called by name.
#pragma once

#include "programmer/devobj.h"

#include <map>
#include <string>
#include <string_view>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::hw {

/// COM has to be initialised on the thread that makes it, which alone may call it.
class device_object final : public devobj {
public:
    /// `class_name` is a ProgID or a class identifier in braces. Throws programmer_error.
    explicit device_object(std::string class_name);

    void setvcc(std::int32_t millivolts) override { call(L"setvcc", millivolts); }
    void setvpp(std::int32_t millivolts, std::uint8_t channel) override { call(L"setvpp", millivolts, channel); }
    void gndpin(std::uint8_t pin, std::uint8_t state) override { call(L"gndpin", pin, state); }
    void vccpin(std::uint8_t pin, std::uint8_t state) override { call(L"vccpin", pin, state); }
    void vpppin(std::uint8_t pin, std::uint8_t state) override { call(L"vpppin", pin, state); }
    void busmode(std::int32_t mode) override { call(L"busmode", mode); }
    void hwinit() override { call(L"hwinit"); }
    std::int32_t hwreset() override { return ask(L"hwreset"); }
    std::int32_t ctlout(std::int32_t value, std::uint8_t address) override { return ask(L"ctlout", value, address); }
    std::int32_t ctlin(std::uint8_t address) override { return ask(L"ctlin", address); }
    void regout(std::int32_t value, std::uint8_t address) override { call(L"regout", value, address); }
    std::int32_t regin(std::uint8_t address) override { return ask(L"regin", address); }
    void delayms(std::int32_t milliseconds) override { call(L"delayms", milliseconds); }
    void delayus(std::int32_t count) override { call(L"delayus", count); }
    bool replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra) override
    {
        return ask(L"replywait", count, mode, extra) != 0;
    }
    void vecout(std::int32_t value, std::uint8_t address) override { call(L"vecout", value, address); }
    void vecstart() override { call(L"vecstart"); }
    void vecbyte(std::uint8_t address) override { call(L"vecbyte", address); }
    void vecdelay(std::int32_t count) override { call(L"vecdelay", count); }
    void vecdelay2(std::int32_t count) override { call(L"vecdelay2", count); }
    void vecgnd(std::uint8_t pin, std::uint8_t state) override { call(L"vecgnd", pin, state); }
    void vecvcc(std::uint8_t pin, std::uint8_t state) override { call(L"vecvcc", pin, state); }
    void vecvpp(std::uint8_t pin, std::uint8_t state) override { call(L"vecvpp", pin, state); }
    void replycheck(std::int32_t count) override { call(L"replycheck", count); }
    void hwrelease() override { call(L"hwrelease"); }
    void hwfault() override { call(L"hwfault"); }
    std::int32_t boardsel(std::uint8_t code) override { return ask(L"boardsel", code); }
    void boardsel2(std::uint8_t first, std::uint8_t second) override { call(L"boardsel2", first, second); }

private:
    enum class result { ignored, number };

    template <class... Given>
    void call(const wchar_t* name, Given... given)
    {
        send(name, result::ignored, given...);
    }
    template <class... Given>
    std::int32_t ask(const wchar_t* name, Given... given)
    {
        return send(name, result::number, given...);
    }
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
    /// Never released: it is kept for the life of the library, and at its end COM has gone already.
    IDispatch* object_ = nullptr;
    std::map<std::wstring_view, DISPID> ids_;
};

}  // namespace tamrix::hw
