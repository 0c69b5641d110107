// A host of tamrix.dll that has a device's vectors tested: everything through COM, lumbat.dll included.
#include "../com/host_block.h"
#include "../com/server.h"
#include "installation.h"
#include "tamrix/blocks.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace tamrix::tests {
namespace {

/// A block of the plug-in as its host sees it.
struct small_block : host_block {
    explicit small_block(const std::string& name) : host_block{small_block_object(name, 5), 40} {}
};

class vector_test_of_a_host : public testing::Test {
protected:
    vector_test_of_a_host()
    {
        ::SetEnvironmentVariableA("TAMRIX_DEVOBJ", nullptr);
        plug_in.call(L"bufcomopt", {value{short{5}}});
        *small_block{"modeltype"}.as<SHORT>() = 40;
        *small_block{"buflength"}.as<LONG>() = 100;
        *small_block{"bvcc"}.as<SHORT>() = 500;
        *small_block{"bgndpin"}.as<BYTE>() = 1;
        *small_block{"bvccpin"}.as<BYTE>() = 107;
        *small_block{"chippin"}.as<SHORT>() = 14;
        plug_in.call(L"buffercomopt", {value{short{5}}});
        std::ofstream{"nand.jed", std::ios::binary}
            << "\x02QF8*F0*L00000 00000000*\nV0001 00H00HGH00H00V*\nV0002 11L11LGL11L11V*\n\x03";
        const value file{L"nand.jed"};
        EXPECT_EQ(plug_in.call(L"readpldfile", {file}).result, S_OK);
    }
    /// What the host finds in its log after a test of both rows.
    std::wstring report(const char* socket)
    {
        test();  // the programmer is made by the first use, and can be changed after that
        dll.change(std::string{"no faults; "} + socket);
        clear_log();
        EXPECT_EQ(test().error, L"");
        const small_block log{"MainRtstr"};
        const BSTR text = *log.as<BSTR>();
        return text == nullptr ? L"" : std::wstring(text, ::SysStringLen(text));
    }
    outcome test()
    {
        VARIANT ok = plain_variant(VT_BOOL);
        ok.boolVal = VARIANT_TRUE;
        return plug_in.call(L"vecttest0", {value{short{1}}, value{short{3}}, value{short{1}}, ok});
    }
    static void clear_log()
    {
        const small_block log{"MainRtstr"};
        ::SysFreeString(*log.as<BSTR>());
        *log.as<BSTR>() = nullptr;
    }
    ~vector_test_of_a_host() override { clear_log(); }

    const installation dll;
    const server tamrix;
    const client plug_in{tamrix};
};

TEST_F(vector_test_of_a_host, passes_with_a_sound_chip_and_shows_no_dialog)
{
    EXPECT_EQ(report("socket 7400"), L">> Vector Test OK!\n");
}

TEST_F(vector_test_of_a_host, tells_the_row_that_a_broken_chip_fails)
{
    EXPECT_EQ(report("socket 7400; fault pin 3 stuck 1"),
              L">> Expected: V0002:11L11LGL11L11V\n>>   Result: V0002:11H11LGL11L11V\n\n>> Vector Test fail!\n");
}

TEST_F(vector_test_of_a_host, of_a_programmer_that_does_not_answer_ends_without_a_verdict)
{
    EXPECT_EQ(report("fault no answer"), L"");
}

}  // namespace
}  // namespace tamrix::tests
