// The functions that cmake/run_time_symbols.txt puts in the place of the system's, for the thread library and the
// exception library of the compiler alone. They may use neither of the two.
#include "com/server/run_time_leftovers.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <windows.h>

namespace __gnu_cxx {
void __freeres();  // no header of the run time declares it
}

namespace tamrix::com {

namespace {

enum class kind { handle, section, thread_data };

struct taken {
    kind what;
    std::uintptr_t which;
    taken* next;
};

// The run time calls before any constructor has run: all of this is there from the start.
constinit std::atomic<HANDLE> own_heap = nullptr;
constinit SRWLOCK of_the_list = SRWLOCK_INIT;
constinit taken* the_list = nullptr;
constinit bool process_lives_on = false;

/// A heap of the DLL's own, so that what is left in it ends with it.
HANDLE heap()
{
    HANDLE found = own_heap;
    if (found != nullptr) return found;
    const HANDLE made = ::HeapCreate(0, 0, 0);
    if (made == nullptr || own_heap.compare_exchange_strong(found, made)) return made;
    ::HeapDestroy(made);
    return found;
}

void* allocate(DWORD how, std::size_t bytes)
{
    const HANDLE from = heap();
    return from == nullptr ? nullptr : ::HeapAlloc(from, how, bytes);
}

/// What finds no memory for its note is left to the process, as all was.
void note(kind what, std::uintptr_t which)
{
    auto* const one = static_cast<taken*>(allocate(0, sizeof(taken)));
    if (one == nullptr) return;
    ::AcquireSRWLockExclusive(&of_the_list);
    *one = {what, which, the_list};
    the_list = one;
    ::ReleaseSRWLockExclusive(&of_the_list);
}

HANDLE noted(HANDLE made)
{
    if (made != nullptr) note(kind::handle, reinterpret_cast<std::uintptr_t>(made));
    return made;
}

void strike_out(kind what, std::uintptr_t which)
{
    ::AcquireSRWLockExclusive(&of_the_list);
    taken** place = &the_list;
    while (*place != nullptr && ((*place)->what != what || (*place)->which != which)) place = &(*place)->next;
    taken* const found = *place;
    if (found != nullptr) *place = found->next;
    ::ReleaseSRWLockExclusive(&of_the_list);
    if (found != nullptr) ::HeapFree(own_heap, 0, found);
}

void give_back(const taken& one)
{
    switch (one.what) {
    case kind::handle: ::CloseHandle(reinterpret_cast<HANDLE>(one.which)); break;
    case kind::section: ::DeleteCriticalSection(reinterpret_cast<CRITICAL_SECTION*>(one.which)); break;
    case kind::thread_data: ::TlsFree(one.which); break;
    }
}

void give_back_all()
{
    if (!process_lives_on) return;
    __gnu_cxx::__freeres();  // what is kept for exceptions when there is no memory
    for (const taken* one = the_list; one != nullptr; one = one->next) give_back(*one);
    the_list = nullptr;
    if (own_heap != nullptr) ::HeapDestroy(own_heap);
    own_heap = nullptr;
}

void come_last() { std::atexit(give_back_all); }

/// One of the C run time's own first steps, so that it undoes itself last: the exception library ends its tables, under
/// a mutex, only after all destructors.
[[gnu::used, gnu::section(".CRT$XCU")]] void (*const at_start)() = come_last;

DWORD WINAPI take_thread_data()
{
    const DWORD made = ::TlsAlloc();
    if (made != TLS_OUT_OF_INDEXES) note(kind::thread_data, made);
    return made;
}

HANDLE WINAPI take_event(SECURITY_ATTRIBUTES* rights, BOOL manual, BOOL set, const char* name)
{
    return noted(::CreateEventA(rights, manual, set, name));
}

HANDLE WINAPI take_semaphore(SECURITY_ATTRIBUTES* rights, LONG count, LONG most, const char* name)
{
    return noted(::CreateSemaphoreA(rights, count, most, name));
}

BOOL WINAPI take_duplicate(HANDLE from, HANDLE which, HANDLE to, HANDLE* made, DWORD access, BOOL inherit, DWORD how)
{
    const BOOL done = ::DuplicateHandle(from, which, to, made, access, inherit, how);
    if (done != FALSE) noted(*made);
    return done;
}

BOOL WINAPI close(HANDLE which)
{
    strike_out(kind::handle, reinterpret_cast<std::uintptr_t>(which));  // once closed, the number may be another's
    return ::CloseHandle(which);
}

void WINAPI take_section(CRITICAL_SECTION* which)
{
    ::InitializeCriticalSection(which);
    note(kind::section, reinterpret_cast<std::uintptr_t>(which));
}

void WINAPI delete_section(CRITICAL_SECTION* which)
{
    strike_out(kind::section, reinterpret_cast<std::uintptr_t>(which));
    ::DeleteCriticalSection(which);
}

}  // namespace

void give_back_run_time() { process_lives_on = true; }

extern "C" {

void* run_time_malloc(std::size_t bytes) { return allocate(0, bytes); }

void* run_time_calloc(std::size_t count, std::size_t bytes)
{
    if (bytes != 0 && count > SIZE_MAX / bytes) return nullptr;
    return allocate(HEAP_ZERO_MEMORY, count * bytes);
}

void* run_time_realloc(void* old, std::size_t bytes)
{
    return old == nullptr ? allocate(0, bytes) : ::HeapReAlloc(own_heap, 0, old, bytes);
}

void run_time_free(void* old)
{
    if (old != nullptr) ::HeapFree(own_heap, 0, old);
}

char* run_time_strdup(const char* text)
{
    const std::size_t bytes = std::strlen(text) + 1;
    auto* const copy = static_cast<char*>(allocate(0, bytes));
    return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, bytes));
}

// The run time calls the system through pointers.
extern constinit decltype(&take_thread_data) const run_time_tls_alloc = take_thread_data;
extern constinit decltype(&take_event) const run_time_create_event = take_event;
extern constinit decltype(&take_semaphore) const run_time_create_semaphore = take_semaphore;
extern constinit decltype(&take_duplicate) const run_time_duplicate_handle = take_duplicate;
extern constinit decltype(&close) const run_time_close_handle = close;
extern constinit decltype(&take_section) const run_time_initialize_section = take_section;
extern constinit decltype(&delete_section) const run_time_delete_section = delete_section;
}

}  // namespace tamrix::com
