// Who frees the BSTRs in a text block: seen at the system's allocator, from which they all come.
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include <windows.h>

#include <oleauto.h>

namespace tamrix::tests {
namespace {

/// Counts how often each address was freed, and what is in use.
class allocator_spy final : public IMallocSpy {
public:
    int frees_of(BSTR text) const
    {
        const auto found = frees_.find(reinterpret_cast<char*>(text) - 4);  // the length is before the text
        return found == frees_.end() ? 0 : found->second;
    }
    int in_use() const { return in_use_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override
    {
        const bool known = wanted == IID_IUnknown || wanted == IID_IMallocSpy;
        *found = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // lives as long as its test
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T bytes) override { return bytes; }
    void* STDMETHODCALLTYPE PostAlloc(void* made) override
    {
        frees_.erase(made);  // an address can come back
        ++in_use_;
        return made;
    }
    void* STDMETHODCALLTYPE PreFree(void* what, BOOL) override
    {
        if (what != nullptr) {
            ++frees_[what];
            --in_use_;
        }
        return what;
    }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* old, SIZE_T bytes, void** given, BOOL) override
    {
        *given = old;
        return bytes;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* made, BOOL) override { return made; }
    void* STDMETHODCALLTYPE PreGetSize(void* what, BOOL) override { return what; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T bytes, BOOL) override { return bytes; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* what, BOOL) override { return what; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int did) override { return did; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

private:
    std::map<void*, int> frees_;
    int in_use_ = 0;
};

struct text_owner : testing::Test {
    scripted_shell shell;
    session plug_in{shell, fresh_name_space()};
    allocator_spy spy;

    void SetUp() override
    {
        plug_in.blocks.attachsmall(1);
        // The system keeps freed texts for the next ones, which would hide what is freed.
        const FARPROC no_cache = ::GetProcAddress(::GetModuleHandleA("oleaut32.dll"), "SetOaNoCache");
        ASSERT_NE(no_cache, nullptr);
        reinterpret_cast<void(WINAPI*)()>(reinterpret_cast<void*>(no_cache))();
        ASSERT_EQ(::CoRegisterMallocSpy(&spy), S_OK);
    }
    void TearDown() override { ::CoRevokeMallocSpy(); }
    BSTR& host_text(int index) { return static_cast<BSTR*>(plug_in.blocks.MainRtstr.mapping()->BaseAddress())[index]; }
};

TEST_F(text_owner, is_whoever_assigns_so_that_the_old_text_is_freed_once)
{
    const BSTR of_host = ::SysAllocString(L"what the host left");
    host_text(0) = of_host;
    EXPECT_EQ(plug_in.blocks.MainRtstr(0).str(), "what the host left");
    EXPECT_EQ(spy.frees_of(of_host), 0) << "reading frees nothing";
    plug_in.blocks.MainRtstr(0) += ", and more";
    EXPECT_EQ(spy.frees_of(of_host), 1);
    const BSTR of_plug_in = host_text(0);
    ASSERT_NE(of_plug_in, nullptr);
    EXPECT_EQ(std::wstring(of_plug_in, ::SysStringLen(of_plug_in)), L"what the host left, and more");
    EXPECT_EQ(spy.in_use(), 1);
    // The host replaces it in its turn.
    ::SysReAllocString(&host_text(0), L"new");
    EXPECT_EQ(plug_in.blocks.MainRtstr(0).str(), "new");
    plug_in.blocks.MainRtstr(0) = "";
    EXPECT_EQ(host_text(0), nullptr);
    EXPECT_EQ(spy.in_use(), 0);
}

TEST_F(text_owner, frees_every_text_of_a_long_run)
{
    for (int i = 0; i < 1000; ++i) plug_in.blocks.MainRtstr(0) = "line " + std::to_string(i);
    EXPECT_EQ(spy.in_use(), 1);
    plug_in.blocks.MainRtstr(0) = "";
    EXPECT_EQ(spy.in_use(), 0);
}

TEST_F(text_owner, of_a_released_block_stays_the_host)
{
    const BSTR kept = ::SysAllocString(L"kept");
    plug_in.blocks.MainRtstr(1) = "";
    host_text(1) = kept;
    plug_in.blocks.attachsmall(2);  // lets go of the blocks of instance 1
    EXPECT_EQ(spy.frees_of(kept), 0) << "the block may live on with another user";
    ::SysFreeString(kept);
}

}  // namespace
}  // namespace tamrix::tests
