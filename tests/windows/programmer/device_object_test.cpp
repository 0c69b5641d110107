// How the plug-in calls a device object.
#include "programmer/device_object_win32.h"

#include "fake_device.h"
#include "programmer/programmer.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

HRESULT STDMETHODCALLTYPE fill_in_late(EXCEPINFO* exception)
{
    exception->bstrDescription = ::SysAllocString(L"late");
    return S_OK;
}

struct called_object : testing::Test {
    fake_device fake;
    hw::device_object device{fake_device::class_name};

    /// What a call throws, without the object's name.
    static std::string error_of(const std::function<void()>& call)
    {
        try {
            call();
        } catch (const hw::programmer_error& error) {
            const std::string text = error.what(), start = "device object " + std::string{fake_device::class_name};
            EXPECT_TRUE(text.starts_with(start)) << text;
            return text.substr(start.size());
        }
        return "no error";
    }
    void answers(VARTYPE type, long number)
    {
        fake.act = [=](VARIANT& result, EXCEPINFO&) {
            result.vt = type;
            result.lVal = number;
            return S_OK;
        };
    }
    void answers(const wchar_t* text)
    {
        fake.act = [=](VARIANT& result, EXCEPINFO&) {
            result.vt = VT_BSTR;
            result.bstrVal = ::SysAllocString(text);
            return S_OK;
        };
    }
};

TEST_F(called_object, gets_its_arguments_by_reference_in_their_exact_widths_and_order)
{
    device.replywait(3, 1, -7);
    device.setvpp(12000, 1);
    device.hwinit();
    const std::vector<VARTYPE> bytes_and_long{VT_BYREF | VT_UI1, VT_BYREF | VT_UI1, VT_BYREF | VT_I4};
    ASSERT_EQ(fake.calls.size(), 3u);
    ASSERT_EQ(fake.calls[0].size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(fake.calls[0][i].vt, bytes_and_long[i]);
    ASSERT_EQ(fake.calls[1].size(), 2u);
    EXPECT_EQ(fake.calls[1][0].vt, VT_BYREF | VT_I4);
    EXPECT_EQ(fake.calls[1][1].vt, VT_BYREF | VT_UI1);
    EXPECT_TRUE(fake.calls[2].empty());
    EXPECT_EQ(fake.numbers, (std::vector<long>{3, 1, -7, 12000, 1}));
}

TEST_F(called_object, is_asked_for_each_name_once)
{
    for (int i = 0; i < 3; ++i) {
        device.regin(0);
        device.regout(1, 2);
    }
    EXPECT_EQ(fake.asked, (std::vector<std::string>{"regin", "regout"}));
    EXPECT_EQ(fake.calls.size(), 6u);
}

TEST_F(called_object, may_give_its_numbers_in_any_type)
{
    EXPECT_EQ(device.hwreset(), 0) << "nothing stands for 0";
    answers(VT_I4, -1);
    EXPECT_EQ(device.regin(0), -1);
    answers(VT_UI1, 0xFF);
    EXPECT_EQ(device.regin(0), 255);
    answers(VT_I2, 1);
    EXPECT_EQ(device.hwreset(), 1);
    answers(L"170");
    EXPECT_EQ(device.ctlin(45), 170);
    answers(VT_BOOL, VARIANT_TRUE);
    EXPECT_TRUE(device.replywait(3, 0, 0));
    answers(VT_BOOL, VARIANT_FALSE);
    EXPECT_FALSE(device.replywait(3, 0, 0));
}

TEST_F(called_object, that_gives_no_number_is_told)
{
    answers(L"seven");
    EXPECT_TRUE(error_of([&] { device.regin(0); }).starts_with(": regin: its result is no number: "));
    EXPECT_EQ(error_of([&] { device.regout(1, 2); }), "no error") << "nobody looks at that result";
}

TEST_F(called_object, that_lacks_an_operation_is_told_when_it_is_needed)
{
    EXPECT_EQ(error_of([&] { device.hwfault(); }), ": hwfault: the object has no such operation");
    EXPECT_EQ(error_of([&] { device.hwrelease(); }), "no error");
}

TEST_F(called_object, tells_its_own_reason_for_a_failed_call)
{
    fake.act = [](VARIANT&, EXCEPINFO& exception) {
        exception.bstrDescription = ::SysAllocString(L"das Kabel ist gelöst 電");
        return DISP_E_EXCEPTION;
    };
    EXPECT_EQ(error_of([&] { device.setvcc(5000); }), ": setvcc: das Kabel ist gelöst 電");
}

TEST_F(called_object, may_give_its_reason_late_or_only_a_number)
{
    fake.act = [](VARIANT&, EXCEPINFO& exception) {
        exception.pfnDeferredFillIn = fill_in_late;
        return DISP_E_EXCEPTION;
    };
    EXPECT_EQ(error_of([&] { device.setvcc(5000); }), ": setvcc: late");
    fake.act = [](VARIANT&, EXCEPINFO& exception) {
        exception.scode = E_ACCESSDENIED;
        return DISP_E_EXCEPTION;
    };
    EXPECT_NE(error_of([&] { device.setvcc(5000); }).find("0x80070005"), std::string::npos);
    fake.act = [](VARIANT&, EXCEPINFO&) { return RPC_E_DISCONNECTED; };
    EXPECT_NE(error_of([&] { device.setvcc(5000); }).find("0x80010108"), std::string::npos);
}

TEST(device_object, of_a_class_that_nobody_has_is_told_with_its_name)
{
    for (const char* name : {"no.such.class", "{5c5e4d0c-0000-0000-0000-2a4f3f6a1b77}", "{nonsense}", ""}) {
        try {
            const hw::device_object device{name};
            FAIL() << name;
        } catch (const hw::programmer_error& error) {
            EXPECT_EQ(error.what(), "device object " + std::string{name} + ": no such class is registered");
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
