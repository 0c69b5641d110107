// A text block of a Windows host holds BSTRs.
#include "blocks/text_heap.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <string>

#include <windows.h>

#include <oleauto.h>

namespace tamrix::tests {
namespace {

struct text_handles : testing::Test {
    scripted_shell shell;
    session plug_in{shell, fresh_name_space()};

    text_handles() { plug_in.blocks.attachsmall(1); }
    /// The element as the host sees it.
    BSTR& host_text(int index) { return static_cast<BSTR*>(plug_in.blocks.MainRtstr.mapping()->BaseAddress())[index]; }
};

TEST_F(text_handles, that_the_plug_in_writes_are_read_by_the_host)
{
    EXPECT_EQ(host_text(0), nullptr);
    plug_in.blocks.MainRtstr(0) = ">>Größe 電 😀";
    ASSERT_NE(host_text(0), nullptr);
    EXPECT_EQ(std::wstring(host_text(0), ::SysStringLen(host_text(0))), L">>Größe 電 😀");
    plug_in.blocks.MainRtstr(0) = "";
    EXPECT_EQ(host_text(0), nullptr);
}

TEST_F(text_handles, that_the_host_writes_are_read_and_freed_by_the_plug_in)
{
    host_text(1) = ::SysAllocStringLen(L"a\0電", 3);
    EXPECT_EQ(plug_in.blocks.MainRtstr(1).str(), std::string("a\0電", 5));
    plug_in.blocks.MainRtstr(1) += "!";
    EXPECT_EQ(::SysStringLen(host_text(1)), 4u);
    plug_in.blocks.MainRtstr(1) = "";
}

TEST_F(text_handles, of_an_empty_text_of_the_host_read_as_empty)
{
    host_text(0) = ::SysAllocString(L"");
    EXPECT_EQ(plug_in.blocks.MainRtstr(0).str(), "");
    plug_in.blocks.MainRtstr(0) = "x";
    EXPECT_EQ(plug_in.blocks.MainRtstr(0).str(), "x");
    plug_in.blocks.MainRtstr(0) = "";
}

TEST_F(text_handles, that_cannot_be_texts_read_as_empty_and_are_not_freed)
{
    for (const std::uint32_t stray : {1u, 4u, 0xDEADBEEFu, 0x10u, 0xFFFFFFFCu, 0x7FFF0000u}) {
        host_text(0) = reinterpret_cast<BSTR>(stray);
        EXPECT_EQ(plug_in.blocks.MainRtstr(0).str(), "") << stray;
        plug_in.blocks.MainRtstr(0) = "";
        EXPECT_EQ(host_text(0), nullptr);
    }
}

TEST_F(text_handles, do_not_grow_the_heap_when_they_are_assigned_over_and_over)
{
    // Frees that did nothing would need a gigabyte.
    const std::string text(5000, 'x');
    for (int i = 0; i < 100000; ++i) plug_in.blocks.MainRtstr(0) = text;
    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof memory;
    ASSERT_NE(::GlobalMemoryStatusEx(&memory), 0);
    EXPECT_GT(memory.ullAvailVirtual, 1u << 30);
    plug_in.blocks.MainRtstr(0) = "";
}

}  // namespace
}  // namespace tamrix::tests
