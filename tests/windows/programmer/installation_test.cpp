// The whole way on Windows: session, engines, lumbat.dll and the device object, simulated programmer, chip.
#include "installation.h"

#include "channel/model.h"
#include "programmer/windows_programmer_win32.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"
#include "ttl/library/library.h"
#include "ttl/run/engines.h"
#include "ttl/run/prepare.h"
#include "ttl/run/ttlload.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <oaidl.h>
#include <objbase.h>
#include <oleauto.h>

namespace tamrix::tests {
namespace {

using engine = run_outcome (*)(session&, ttl_variables&, std::int16_t, std::int16_t, std::int16_t, std::uint8_t);

/// The model that main() received.
std::int16_t model_of_simulator()
{
    char options[256] = {};
    ::GetEnvironmentVariableA("TAMRIX_SIMULATOR", options, sizeof options);
    return static_cast<std::int16_t>(std::stoi(std::string{options}.substr(6)));
}

class installed : public testing::Test {
protected:
    installed()
    {
        ::SetEnvironmentVariableA("TAMRIX_NAMESPACE", name_space.c_str());
        ::SetEnvironmentVariableA("TAMRIX_DEVOBJ", nullptr);
        plug_in.blocks.attachsmall(3);
        plug_in.blocks.modeltype(0) = model_of_simulator();
        plug_in.syspath = "";
        ttl.ok = bool16_true;
        plug_in.hardware.source = hw::windows_source();
        shell.on_doevents = [this] {
            std::this_thread::sleep_for(std::chrono::microseconds{100});
            const double now = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
            shell.advance(now - shell.seconds());
        };
        plug_in.hardware.device().hwreset();  // makes the programmer, which can be changed from now on
        dll.change("socket empty; no faults");
        (void)dll.hazards();
    }
    ~installed() override { ::SetEnvironmentVariableA("TAMRIX_NAMESPACE", nullptr); }

    /// True where the vectors of a 7400 pass.
    bool passes(engine run, bool usb, std::int16_t stopfirst = -1)
    {
        plug_in.blocks.usbable(0) = usb ? bool16_true : bool16_false;
        ttlload(plug_in, ttl, "7400", 0, -1);
        EXPECT_GT(ttl.ttlcnt, 2) << "there are vectors";
        EXPECT_TRUE(prepare_supply(plug_in, ttl, "7400"));
        plug_in.blocks.prgresult(0) = 0;
        const bool failed = run(plug_in, ttl, ttl.ttlcnt, ttl.ttlpin, stopfirst, 0).ended_in_failure();
        plug_in.hardware.device().hwrelease();
        return !failed && plug_in.blocks.prgresult(0) == 0;
    }
    bool is_socket40() { return hw::model_of(plug_in.blocks.modeltype(0)).vector_positions == 40; }
    std::string error_of_device()
    {
        try {
            plug_in.hardware.device().hwreset();
        } catch (const hw::programmer_error& error) {
            return error.what();
        }
        return "no error";
    }

    const installation dll;
    const std::string name_space = fresh_name_space();
    scripted_shell shell;
    session plug_in{shell, name_space};
    ttl_variables ttl;

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// On every engine of the model. A script's results come by a bulk read into `ibuf2`.
TEST_F(installed, a_sound_chip_passes_on_every_engine_and_nothing_comes_to_harm)
{
    dll.change("socket 7400");
    const engine by_rows = is_socket40() ? runport40 : runport, as_script = is_socket40() ? runbatch40 : runbatch;
    EXPECT_TRUE(passes(by_rows, true));
    EXPECT_TRUE(passes(as_script, true));
    if (!is_socket40()) {
        EXPECT_TRUE(passes(by_rows, false));
    }
    EXPECT_EQ(dll.hazards(), std::vector<std::string>{});
}

TEST_F(installed, a_broken_chip_and_an_empty_socket_fail)
{
    const engine by_rows = is_socket40() ? runport40 : runport, as_script = is_socket40() ? runbatch40 : runbatch;
    for (const char* broken : {"socket 7400; fault pin 3 stuck 1", "no faults; socket 7402", "socket empty"}) {
        dll.change(broken);
        EXPECT_FALSE(passes(by_rows, true)) << broken;
        EXPECT_FALSE(passes(as_script, true)) << broken;
        EXPECT_FALSE(passes(by_rows, false)) << broken;
    }
}

TEST_F(installed, a_reply_lands_in_ibuf1_of_the_host)
{
    plug_in.blocks.ibuf1(0) = 0x5A;
    plug_in.blocks.ibuf1(6) = 0x5A;
    std::uint8_t frame[13] = {5};
    for (int i = 1; i < 13; ++i) frame[i] = 255;
    EXPECT_NE(plug_in.hardware.transport().usbcomwrite(frame, 13), 1);
    EXPECT_TRUE(plug_in.hardware.device().replywait(3, 0, 0));
    for (int i = 0; i < 6; ++i) EXPECT_EQ(plug_in.blocks.ibuf1(i), 255) << "an empty socket is pulled up";
    EXPECT_EQ(plug_in.blocks.ibuf1(6), 0x5A);
    EXPECT_FALSE(plug_in.hardware.device().replywait(3, 0, 0));
}

TEST_F(installed, replies_follow_the_host_when_it_attaches_other_blocks)
{
    plug_in.hardware.forget();
    plug_in.blocks.attachsmall(9);
    const std::uint8_t frame[13] = {5, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
    EXPECT_NE(plug_in.hardware.transport().usbcomwrite(frame, 13), 1);
    EXPECT_TRUE(plug_in.hardware.device().replywait(3, 0, 0));
    EXPECT_EQ(plug_in.blocks.ibuf1(0), 255);
}

TEST_F(installed, a_failed_write_and_a_silent_programmer_are_seen)
{
    dll.change("fault no answer");
    const std::uint8_t frame[13] = {5};
    EXPECT_EQ(plug_in.hardware.transport().usbcomwrite(frame, 13), 1);
    EXPECT_EQ(plug_in.hardware.device().hwreset(), 1);
    EXPECT_EQ(plug_in.hardware.device().regin(0), -1);
}

TEST_F(installed, both_halves_are_one_programmer_and_write_one_transcript)
{
    const std::uint8_t frame[3] = {10, 0, 0};
    plug_in.hardware.transport().usbcomwrite(frame, 3);
    plug_in.hardware.device().boardsel2(7, 3);
    std::ifstream file{"transcript.txt"};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    const auto sent = text.rfind("usbcomwrite 3: 0A 00 00"), selected = text.rfind("boardsel2 7 3");
    ASSERT_NE(sent, std::string::npos);
    ASSERT_NE(selected, std::string::npos);
    EXPECT_LT(sent, selected);
}

TEST_F(installed, the_environment_may_name_another_class_of_device_object)
{
    ::SetEnvironmentVariableA("TAMRIX_DEVOBJ", "nobodys.devobj");
    plug_in.hardware.forget();
    EXPECT_EQ(error_of_device(), "no error") << "the one in use stays";
    plug_in.hardware.source = hw::windows_source();
    plug_in.hardware.forget();
    EXPECT_TRUE(error_of_device().starts_with("device object nobodys.devobj: ")) << error_of_device();
    ::SetEnvironmentVariableA("TAMRIX_DEVOBJ", "{8c037568-3eb3-4ffa-be7b-5c9fafe6c57d}");
    EXPECT_EQ(error_of_device(), "no error") << "tried anew at the next use";
}

TEST_F(installed, a_missing_half_does_not_keep_the_other_from_work)
{
    plug_in.hardware.source = hw::windows_source({.transport_library = "nowhere.dll"});
    plug_in.hardware.forget();
    EXPECT_THROW(plug_in.hardware.transport(), hw::programmer_error);
    EXPECT_EQ(error_of_device(), "no error");
    dll.change("socket 7400");
    if (!is_socket40()) {
        EXPECT_TRUE(passes(runport, false)) << "the route without USB";
    }
}

TEST_F(installed, the_device_object_refuses_what_it_does_not_know)
{
    CLSID id{};
    ASSERT_EQ(::CLSIDFromProgID(L"lumbat.devobj", &id), S_OK);
    IDispatch* object = nullptr;
    ASSERT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&object)),
              S_OK);
    std::wstring name = L"SetVcc", unknown = L"setvdd";
    wchar_t *names[] = {name.data()}, *unknown_names[] = {unknown.data()};
    DISPID known = 0, none = 0;
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, 0, &known), S_OK);
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, unknown_names, 1, 0, &none), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(none, DISPID_UNKNOWN);
    VARIANTARG text{};
    text.vt = VT_BSTR;
    text.bstrVal = ::SysAllocString(L"much");
    DISPPARAMS parameters{&text, nullptr, 1, 0}, nothing{};
    const auto invoke = [&](DISPID which, WORD flags, DISPPARAMS* given) {
        return object->Invoke(which, IID_NULL, 0, flags, given, nullptr, nullptr, nullptr);
    };
    EXPECT_EQ(invoke(known, DISPATCH_METHOD, &parameters), DISP_E_TYPEMISMATCH);
    ::SysFreeString(text.bstrVal);
    text = {};
    text.vt = VT_BYREF | VT_I4;
    EXPECT_EQ(invoke(known, DISPATCH_METHOD, &parameters), E_POINTER);
    EXPECT_EQ(invoke(known, DISPATCH_METHOD, &nothing), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(invoke(known, DISPATCH_METHOD, nullptr), E_POINTER);
    EXPECT_EQ(invoke(known, DISPATCH_PROPERTYGET, &parameters), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(0, DISPATCH_METHOD, &parameters), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(1000, DISPATCH_METHOD, &parameters), DISP_E_MEMBERNOTFOUND);
    object->Release();
}

}  // namespace
}  // namespace tamrix::tests
