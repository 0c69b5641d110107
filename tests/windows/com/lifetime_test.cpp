// What is left of the plug-in after it was used and let go, over and over.
#include "open_handles.h"
#include "server.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include <psapi.h>

namespace tamrix::tests {
namespace {

struct figures {
    long handles = 0;
    long private_kilobytes = 0;
};

figures figures_now()
{
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return {open_handles(), static_cast<long>(counters.PagefileUsage / 1024)};
}

void print(const char* what, const figures& seen)
{
    std::printf("%s: %ld handles, %ld KiB private\n", what, seen.handles, seen.private_kilobytes);
}

void expect_no_growth(const figures& before, const figures& after, long allowed_kilobytes)
{
    print("before", before);
    print("after", after);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_LE(after.private_kilobytes, before.private_kilobytes + allowed_kilobytes);
}

HRESULT fail_without_programmer(const client& object)
{
    return object.call(L"vecttest0", {value{short{1}}, value{short{3}}, value{short{0}}, value{short{-1}}}).result;
}

/// One host's use of the plug-in, from its object to the object's end.
void use(const server& dll)
{
    const value file{L"small.jed"}, chain{L"missing.svf"}, folder{L"C:\\nowhere\\"};
    const client object{dll};
    ASSERT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK);
    ASSERT_EQ(object.call(L"buffercomopt", {value{short{1}}}).result, S_OK);
    ASSERT_EQ(object.call(L"readpldfile", {file}).result, S_OK);
    ASSERT_EQ(object.call(L"readsvffile", {chain, folder}).result, S_OK);
    ASSERT_EQ(fail_without_programmer(object), DISP_E_EXCEPTION);
    ASSERT_EQ(object.call(L"freesharebufferopt").result, S_OK);
}

struct lifetime : testing::Test {
    void SetUp() override
    {
        let_com_unload();
        std::ofstream{"small.jed", std::ios::binary} << "\x02QF8*F0*L00000 11010000*\x03";
    }
};

TEST_F(lifetime, of_a_thousand_objects_leaves_nothing)
{
    const server dll;
    for (int i = 0; i < 50; ++i) use(dll);  // what is kept once stands now
    const figures before = figures_now();
    for (int i = 0; i < 1000; ++i) {
        use(dll);
        ASSERT_EQ(dll.can_unload_now(), S_OK);
    }
    expect_no_growth(before, figures_now(), 256);
}

constexpr int loads = 150;

/// What so many loads of a library add.
figures growth(const char* what, void (*once)())
{
    for (int i = 0; i < 10; ++i) once();
    const figures before = figures_now();
    for (int i = 0; i < loads; ++i) once();
    const figures after = figures_now();
    const figures added{after.handles - before.handles, after.private_kilobytes - before.private_kilobytes};
    print(what, added);
    return added;
}

void load_alone()
{
    const server dll;
    EXPECT_EQ(dll.can_unload_now(), S_OK);
}

void load_and_fail_once()
{
    const server dll;
    const client object{dll};
    EXPECT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK);
    EXPECT_EQ(fail_without_programmer(object), DISP_E_EXCEPTION);
}

void load_and_use()
{
    const server dll;
    use(dll);
    EXPECT_EQ(dll.can_unload_now(), S_OK);
}

// At each unload the compiler's run time leaves four handles behind and a place for data of threads (of those there are
// 1088, so a process cannot load such a library more often), with the first exception a table of all functions, and the
// toolkit a mutex. That is all that may be left.
TEST_F(lifetime, of_many_loads_of_the_library_leaves_what_its_run_time_leaves_and_nothing_of_its_own)
{
    const figures of_load = growth("a load alone adds", load_alone);
    const figures of_failure = growth("an object with one failure adds", load_and_fail_once);
    const figures of_use = growth("full use adds", load_and_use);
    EXPECT_EQ(::GetModuleHandleA("tamrix.dll"), nullptr);
    EXPECT_LE(of_load.handles, 5 * loads);
    EXPECT_LE(of_failure.handles, of_load.handles);
    EXPECT_LE(of_use.handles, of_load.handles);
    EXPECT_LE(of_use.private_kilobytes, of_failure.private_kilobytes + 8 * loads) << "the heap rounds";
}

TEST_F(lifetime, of_a_leak_would_be_seen)
{
    const figures before = figures_now();
    HANDLE events[3];
    for (HANDLE& one : events) one = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
    std::string heap(4 << 20, 'x');
    const figures after = figures_now();
    print("before", before);
    print("after", after);
    EXPECT_EQ(after.handles, before.handles + 3);
    EXPECT_GE(after.private_kilobytes, before.private_kilobytes + 4096) << heap[0];
    for (const HANDLE one : events) ::CloseHandle(one);
}

TEST_F(lifetime, of_a_type_description_does_not_hold_the_library_and_does_not_need_it)
{
    ITypeInfo* info = nullptr;
    {
        const server dll;
        const client object{dll};
        ASSERT_EQ(object.get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
    }
    EXPECT_EQ(::GetModuleHandleA("tamrix.dll"), nullptr);
    std::wstring name = L"bufcomopt";
    wchar_t* names[] = {name.data()};
    MEMBERID id = 0;
    EXPECT_EQ(info->GetIDsOfNames(names, 1, &id), S_OK);
    EXPECT_EQ(id, 0x60030011);
    EXPECT_EQ(info->Release(), 0u);
}

TEST_F(lifetime, of_the_library_ends_only_with_its_last_object_factory_and_lock)
{
    const server dll;
    IClassFactory* factory = nullptr;
    ASSERT_EQ(dll.get_class_object(class_id, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
    IUnknown *first = nullptr, *second = nullptr;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&first)), S_OK);
    ASSERT_EQ(factory->CreateInstance(nullptr, interface_id, reinterpret_cast<void**>(&second)), S_OK);
    EXPECT_NE(first, second);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(first->Release(), 0u);
    EXPECT_EQ(dll.can_unload_now(), S_FALSE);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(second->Release(), 0u);
    EXPECT_EQ(dll.can_unload_now(), S_FALSE) << "a factory and a lock are left";
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(dll.can_unload_now(), S_FALSE) << "the factory is left";
    EXPECT_EQ(factory->Release(), 0u);
    EXPECT_EQ(dll.can_unload_now(), S_OK);
}

}  // namespace
}  // namespace tamrix::tests
