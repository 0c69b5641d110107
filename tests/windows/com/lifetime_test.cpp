// What is left of the plug-in after it was used and let go, over and over.
#include "open_handles.h"
#include "server.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdio>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

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
    EXPECT_NEAR(after.handles, before.handles, 2) << "the system's own threads come and go";
    EXPECT_LE(after.private_kilobytes, before.private_kilobytes + allowed_kilobytes);
}

HRESULT fail_without_programmer(const client& object)
{
    return object.call(L"vecttest0", {value{short{1}}, value{short{3}}, value{short{0}}, value{short{-1}}}).result;
}

/// One host's use of the plug-in, from its object to the object's end.
void use(const server& dll)
{
    const value chain{L"missing.svf"}, folder{L"C:\\nowhere\\"};
    const client object{dll};
    ASSERT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK);
    ASSERT_EQ(object.call(L"buffercomopt", {value{short{1}}}).result, S_OK);
    ASSERT_EQ(object.call(L"readsvffile", {chain, folder}).result, S_OK);
    ASSERT_EQ(fail_without_programmer(object), DISP_E_EXCEPTION);
    ASSERT_EQ(object.call(L"freesharebufferopt").result, S_OK);
}

void read_fuses(const server& dll)
{
    const value file{L"small.jed"};
    const client object{dll};
    ASSERT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK);
    ASSERT_EQ(object.call(L"readpldfile", {file}).result, S_OK);
}

struct lifetime : testing::Test {
    void SetUp() override
    {
        let_com_unload();
        std::ofstream{"small.jed", std::ios::binary} << "\x02QF8*F0*L00000 11010000*\x03";
    }
};

TEST_F(lifetime, of_many_objects_leaves_nothing)
{
    const server dll;
    for (int i = 0; i < 20; ++i) {  // what is kept once is there then
        use(dll);
        read_fuses(dll);
    }
    const figures before = figures_now();
    for (int i = 0; i < 100; ++i) {
        use(dll);
        read_fuses(dll);
        ASSERT_EQ(dll.can_unload_now(), S_OK);
    }
    expect_no_growth(before, figures_now(), 256);
}

/// A host with windows has these loaded anyway. What they themselves leave with each load is theirs: wine's printer
/// library leaves a mutex.
void hold_the_libraries_of_the_system()
{
    std::vector<HMODULE> all(512);
    const server dll;
    const HMODULE own = ::GetModuleHandleA("tamrix.dll");
    DWORD bytes = 0;
    ASSERT_NE(::EnumProcessModules(::GetCurrentProcess(), all.data(), static_cast<DWORD>(all.size() * sizeof(HMODULE)),
                                   &bytes),
              FALSE);
    all.resize(bytes / sizeof(HMODULE));
    for (const HMODULE one : all) {
        char name[MAX_PATH];
        if (one != own && ::GetModuleFileNameA(one, name, MAX_PATH) != 0) ::LoadLibraryA(name);
    }
}

/// Places for data of threads that the process can still take.
int places_for_thread_data()
{
    std::vector<DWORD> taken;
    for (DWORD one = ::TlsAlloc(); one != TLS_OUT_OF_INDEXES; one = ::TlsAlloc()) taken.push_back(one);
    for (const DWORD one : taken) ::TlsFree(one);
    return static_cast<int>(taken.size());
}

long heap_bytes()
{
    std::vector<HANDLE> heaps(::GetProcessHeaps(0, nullptr));
    heaps.resize(::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    long bytes = 0;
    for (const HANDLE heap : heaps) {
        PROCESS_HEAP_ENTRY one{};
        while (::HeapWalk(heap, &one) != FALSE)
            if ((one.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += static_cast<long>(one.cbData);
    }
    return bytes;
}

struct remains {
    figures all = figures_now();
    int places = places_for_thread_data();
    long heap = heap_bytes();
};

/// What so many rounds add; the first few bring what is kept once.
void expect_nothing_left(const char* what, int rounds, void (*once)())
{
    hold_the_libraries_of_the_system();
    std::printf("%d times %s:\n", rounds, what);
    for (int i = 0; i < 10; ++i) once();
    const remains before;
    for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) once();
    const remains after;
    EXPECT_EQ(::GetModuleHandleA("tamrix.dll"), nullptr);
    expect_no_growth(before.all, after.all, 256);
    EXPECT_EQ(after.places, before.places);
    std::printf("the heaps have %ld bytes more\n", after.heap - before.heap);
    EXPECT_LT(after.heap - before.heap, rounds) << "a byte a round would be a leak";
}

void load_alone()
{
    const server dll;
    EXPECT_EQ(dll.can_unload_now(), S_OK);
}

void load_and_use()
{
    const server dll;
    use(dll);
    EXPECT_EQ(dll.can_unload_now(), S_OK);
}

/// The library is unloaded while another thread of the host that called it and met a failure lives on.
void load_and_use_by_a_thread_that_stays()
{
    std::mutex guard;
    std::condition_variable changed;
    bool used = false, unloaded = false;
    std::thread other;
    {
        const server dll;
        const client keeper{dll};
        other = std::thread{[&] {
            EXPECT_EQ(fail_without_programmer(client{dll}), DISP_E_EXCEPTION);
            std::unique_lock held{guard};
            used = true;
            changed.notify_all();
            changed.wait(held, [&] { return unloaded; });
        }};
        std::unique_lock held{guard};
        changed.wait(held, [&] { return used; });
    }
    EXPECT_EQ(::GetModuleHandleA("tamrix.dll"), nullptr);
    {
        const std::lock_guard held{guard};
        unloaded = true;
    }
    changed.notify_all();
    other.join();
}

TEST_F(lifetime, of_many_loads_alone_leaves_nothing) { expect_nothing_left("loaded", 200, load_alone); }

TEST_F(lifetime, of_a_thousand_loads_with_full_use_leaves_nothing)
{
    expect_nothing_left("loaded and used", 1000, load_and_use);
}

TEST_F(lifetime, of_loads_leaves_nothing_in_a_thread_that_called_and_lives_on)
{
    expect_nothing_left("loaded and used by a thread that stays", 100, load_and_use_by_a_thread_that_stays);
}

TEST_F(lifetime, of_a_leak_would_be_seen)
{
    const remains before;
    HANDLE events[3];
    for (HANDLE& one : events) one = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
    const DWORD place = ::TlsAlloc();
    const std::string small(1000, 'x'), big(4 << 20, 'x');
    const remains after;
    print("before", before.all);
    print("after", after.all);
    EXPECT_EQ(after.all.handles, before.all.handles + 3);
    EXPECT_GE(after.all.private_kilobytes, before.all.private_kilobytes + 4096) << big[0];
    EXPECT_EQ(after.places, before.places - 1);
    EXPECT_GE(after.heap, before.heap + 1000) << small[0];
    ::TlsFree(place);
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
