// The plug-in belongs to one thread. What happens to calls from another.
#include "server.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include <tamrix.h>

namespace tamrix::tests {
namespace {

/// Waits a moment for messages and answers them, as a thread with windows does.
void answer_messages()
{
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0;) ::DispatchMessageW(&message);
}

/// Runs work on a second thread in the apartment of the free ones; meanwhile this thread answers messages.
void on_second_thread(const std::function<void()>& work)
{
    std::atomic<bool> done = false;
    std::thread second{[&] {
        ASSERT_TRUE(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
        work();
        ::CoUninitialize();
        done = true;
    }};
    while (!done) answer_messages();
    second.join();
}

struct registered : testing::Test {
    const server dll;
    void SetUp() override { ASSERT_EQ(dll.register_server(), S_OK); }
    void TearDown() override { dll.unregister_server(); }
};

TEST_F(registered, threading_model_is_apartment)
{
    wchar_t model[32] = {};
    DWORD bytes = sizeof model;
    EXPECT_EQ(::RegGetValueW(HKEY_LOCAL_MACHINE,
                             L"Software\\Classes\\CLSID\\{0ADDA2F4-4E2B-4280-90F8-8BB90F3DA368}\\InprocServer32",
                             L"ThreadingModel", RRF_RT_REG_SZ, nullptr, model, &bytes),
              ERROR_SUCCESS);
    EXPECT_STREQ(model, L"Apartment");
}

TEST_F(registered, objects_made_by_a_free_thread_live_in_an_apartment_of_one_thread)
{
    on_second_thread([] {
        IDispatch* made = nullptr;
        ASSERT_EQ(
            ::CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&made)),
            S_OK);
        IUnknown* stand_in = nullptr;
        EXPECT_EQ(made->QueryInterface(IID_IMultiQI, reinterpret_cast<void**>(&stand_in)), S_OK)
            << "the system's stand-in for the object has it, the object has not";
        if (stand_in != nullptr) stand_in->Release();
        const client object{made};
        EXPECT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK);
        EXPECT_EQ(object.call(L"bufcomopt", {value{L"one"}}).result, DISP_E_TYPEMISMATCH);
        EXPECT_EQ(object.call(L"freesharebufferopt").result, S_OK);
    });
}

TEST_F(registered, interface_reaches_another_thread_by_the_type_library)
{
    client object{dll};
    IStream* parcel = nullptr;
    ASSERT_EQ(::CoMarshalInterThreadInterfaceInStream(interface_id, object.get(), &parcel), S_OK);
    on_second_thread([&] {
        _Clstamrix* plug_in = nullptr;
        ASSERT_EQ(::CoGetInterfaceAndReleaseStream(parcel, interface_id, reinterpret_cast<void**>(&plug_in)), S_OK);
        EXPECT_NE(static_cast<void*>(plug_in), static_cast<void*>(object.get()));
        short number = 1;
        EXPECT_EQ(plug_in->bufcomopt(&number), S_OK);
        BSTR file = ::SysAllocString(L"missing.svf"), folder = ::SysAllocString(L"C:\\nowhere\\");
        VARIANT result = plain_variant(VT_EMPTY);
        EXPECT_EQ(plug_in->readsvffile(&file, &folder, &result), S_OK);
        EXPECT_EQ(result.vt, VT_I2);
        EXPECT_EQ(std::wstring(file), L"missing.svf");
        ::SysFreeString(file);
        ::SysFreeString(folder);
        plug_in->Release();
    });
}

TEST_F(registered, calls_from_another_thread_wait_for_the_thread_of_the_object)
{
    client object{dll};
    IStream* parcel = nullptr;
    ASSERT_EQ(::CoMarshalInterThreadInterfaceInStream(IID_IDispatch, object.get(), &parcel), S_OK);
    std::atomic<bool> ready = false, busy = false, answered = false, done = false;
    std::thread second{[&] {
        ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        IDispatch* stand_in = nullptr;
        if (::CoGetInterfaceAndReleaseStream(parcel, IID_IDispatch, reinterpret_cast<void**>(&stand_in)) == S_OK) {
            const client from_outside{stand_in};
            const DISPID id = 0x60030013;
            DISPPARAMS none{};
            ready = true;
            while (!busy) ::Sleep(1);
            EXPECT_EQ(stand_in->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
            answered = true;
        }
        ::CoUninitialize();
        done = true;
    }};
    while (!ready && !done) answer_messages();
    busy = true;
    ::Sleep(300);
    EXPECT_FALSE(answered);
    while (!done) answer_messages();
    EXPECT_TRUE(answered);
    second.join();
}

TEST(apartments, that_are_ignored_do_not_harm_while_the_other_thread_waits)
{
    const server dll;
    const client object{dll};
    for (const bool joins_one : {false, true}) {
        std::thread{[&] {
            if (joins_one) ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            EXPECT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK);
            EXPECT_EQ(object.call(L"bufcomopt", {value{L"one"}}).result, DISP_E_TYPEMISMATCH);
            EXPECT_EQ(
                object.call(L"vecttest0", {value{short{1}}, value{short{3}}, value{short{0}}, value{short{-1}}}).error,
                L"device object lumbat.devobj: no such class is registered");
            if (joins_one) ::CoUninitialize();
        }}.join();
    }
    EXPECT_EQ(object.call(L"freesharebufferopt").result, S_OK);
}

}  // namespace
}  // namespace tamrix::tests
