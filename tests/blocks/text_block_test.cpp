// POSIX only: the process's own heap of texts; tests/windows has the like for the system's.
#include "blocks/block.h"

#include "blocks/text_heap.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"
#include "support/shared_objects.h"
#include "tamrix/text_heap.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix {
namespace {

struct texts : testing::Test {
    const std::string prefix = tests::fresh_name_space();
    tests::scripted_shell shell;
    const std::size_t before = tamrix_text_count();
    std::unique_ptr<session> plug_in = std::make_unique<session>(shell, prefix);

    texts() { plug_in->blocks.attachsmall(1); }

    text_block& MainRtstr() { return plug_in->blocks.MainRtstr; }
    /// The handle as the host sees it.
    std::uint32_t& handle(int index)
    {
        return static_cast<std::uint32_t*>(MainRtstr().mapping()->BaseAddress())[index];
    }
    /// Handles in use that this test made.
    std::size_t live() const { return tamrix_text_count() - before; }
    static std::string_view host_reads(std::uint32_t handle)
    {
        std::size_t length = 0;
        const char* text = tamrix_text_get(handle, &length);
        return {text, length};
    }
    void TearDown() override
    {
        plug_in.reset();
        EXPECT_EQ(live(), 0u) << "a handle was not freed";
        EXPECT_EQ(tests::shared_objects(prefix).size(), 0u);
    }
};

TEST_F(texts, are_empty_at_first)
{
    EXPECT_EQ(handle(0), 0u);
    EXPECT_EQ(MainRtstr()(0).str(), "");
}

TEST_F(texts, cross_to_the_host_as_handles)
{
    MainRtstr()(0) = ">>Load File OK!";
    EXPECT_NE(handle(0), 0u);
    EXPECT_EQ(host_reads(handle(0)), ">>Load File OK!");
    tamrix_text_free(handle(0));
    handle(0) = tamrix_text_new("Größe\0電", 11);
    EXPECT_EQ(std::string{MainRtstr()(0)}, std::string("Größe\0電", 11));
    MainRtstr()(0) = "";
}

TEST_F(texts, free_the_old_handle_when_they_are_assigned)
{
    MainRtstr()(0) = "first";
    EXPECT_EQ(live(), 1u);
    const std::uint32_t old = handle(0);
    MainRtstr()(0) = "second";
    EXPECT_EQ(live(), 1u);
    EXPECT_EQ(host_reads(old), "") << "the old handle is known no more";
    EXPECT_EQ(MainRtstr()(0).str(), "second");
    MainRtstr()(0) = "";
    EXPECT_EQ(live(), 0u);
    EXPECT_EQ(handle(0), 0u);
}

TEST_F(texts, free_the_handle_that_the_host_put_there)
{
    handle(1) = tamrix_text_new("from the host", 13);
    EXPECT_EQ(live(), 1u);
    MainRtstr()(1) = "";
    EXPECT_EQ(live(), 0u);
}

TEST_F(texts, do_not_mind_a_handle_that_nobody_knows)
{
    handle(0) = 0xDEADBEEF;
    EXPECT_EQ(MainRtstr()(0).str(), "");
    MainRtstr()(0) = "x";
    EXPECT_EQ(live(), 1u);
    MainRtstr()(0) = "";
}

TEST_F(texts, are_appended_to_with_one_handle_left)
{
    MainRtstr()(0) += ">>Load File OK!";
    MainRtstr()(0) += "\r\n";
    MainRtstr()(0) += ">>Save File OK!";
    EXPECT_EQ(MainRtstr()(0).str(), ">>Load File OK!\r\n>>Save File OK!");
    EXPECT_EQ(live(), 1u);
    MainRtstr()(0) = "";
}

TEST_F(texts, can_be_assigned_from_themselves)
{
    MainRtstr()(0) = "again";
    MainRtstr()(0) = host_reads(handle(0));
    EXPECT_EQ(MainRtstr()(0).str(), "again");
    EXPECT_EQ(live(), 1u);
    MainRtstr()(0) = "";
}

TEST_F(texts, stand_in_elements_of_their_own)
{
    for (int i = 0; i < 3; ++i) MainRtstr()(i) = std::to_string(i);
    EXPECT_EQ(live(), 3u);
    EXPECT_THROW(MainRtstr()(3) = "x", subscript_error);
    EXPECT_THROW(MainRtstr()(-1) = "x", subscript_error);
    EXPECT_EQ(live(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(MainRtstr()(i).str(), std::to_string(i));
        MainRtstr()(i) = "";
    }
}

TEST_F(texts, keep_their_handles_in_the_block_when_a_session_leaves_it)
{
    session host{shell, prefix};
    host.blocks.attachsmall(1);
    MainRtstr()(0) = "for the host";
    plug_in = std::make_unique<session>(shell, prefix);
    EXPECT_EQ(host.blocks.MainRtstr(0).str(), "for the host");
    host.blocks.MainRtstr(0) = "";
}

TEST_F(texts, of_the_private_element_are_freed_when_the_block_is_attached)
{
    session other{shell, prefix};
    other.blocks.MainRtstr(0) = "private";
    EXPECT_EQ(live(), 1u);
    other.blocks.attachsmall(1);
    EXPECT_EQ(live(), 0u);
    EXPECT_EQ(other.blocks.MainRtstr(0).str(), "");
}

TEST_F(texts, of_the_private_element_are_freed_with_the_session)
{
    {
        session other{shell, prefix + "no/such/folder/"};
        other.blocks.attachsmall(1);
        other.blocks.wcompany(0) = "private";
        other.blocks.wcompany(0) = "still private";
        EXPECT_EQ(other.blocks.wcompany(0).str(), "still private");
        EXPECT_EQ(live(), 1u);
    }
    EXPECT_EQ(live(), 0u);
}

TEST_F(texts, of_five_sessions_at_once_are_counted_together_and_do_not_meet)
{
    std::vector<std::unique_ptr<session>> sessions;
    for (int i = 0; i < 5; ++i) {
        sessions.push_back(std::make_unique<session>(shell, prefix + std::to_string(i) + "-"));
        sessions.back()->blocks.attachsmall(1);
        sessions.back()->blocks.wtype(2) = "device " + std::to_string(i);
    }
    EXPECT_EQ(live(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(sessions[i]->blocks.wtype(2).str(), "device " + std::to_string(i));
        sessions[i]->blocks.wtype(2) = "";
        EXPECT_EQ(live(), 4 - i);
    }
}

TEST(text_heap, gives_a_handle_that_is_not_0_even_to_an_empty_text_of_the_host)
{
    const std::size_t before = tamrix_text_count();
    const std::uint32_t empty = tamrix_text_new("", 0);
    EXPECT_NE(empty, 0u);
    EXPECT_EQ(tamrix_text_count(), before + 1);
    EXPECT_STREQ(tamrix_text_get(empty, nullptr), "");
    tamrix_text_free(empty);
    EXPECT_EQ(tamrix_text_count(), before);
}

TEST(text_heap, gives_texts_that_end_with_a_nul_that_is_not_counted)
{
    const std::uint32_t handle = tamrix_text_new("abcdef", 3);
    std::size_t length = 99;
    const char* text = tamrix_text_get(handle, &length);
    EXPECT_EQ(length, 3u);
    EXPECT_STREQ(text, "abc");
    tamrix_text_free(handle);
}

TEST(text_heap, ignores_0_and_unknown_handles)
{
    const std::size_t before = tamrix_text_count();
    const std::uint32_t handle = tamrix_text_new("x", 1);
    tamrix_text_free(handle);
    tamrix_text_free(handle);
    tamrix_text_free(0);
    EXPECT_EQ(tamrix_text_count(), before);
    std::size_t length = 99;
    EXPECT_STREQ(tamrix_text_get(handle, &length), "");
    EXPECT_EQ(length, 0u);
    EXPECT_STREQ(tamrix_text_get(0, nullptr), "");
    EXPECT_EQ(text_heap::make(""), 0u);
}

TEST(text_heap, gives_every_text_a_handle_of_its_own)
{
    const std::uint32_t first = tamrix_text_new("same", 4), second = tamrix_text_new("same", 4);
    EXPECT_NE(first, second);
    tamrix_text_free(first);
    EXPECT_STREQ(tamrix_text_get(second, nullptr), "same");
    tamrix_text_free(second);
}

}  // namespace
}  // namespace tamrix
