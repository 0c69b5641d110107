#include "server.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tamrix::tests {
namespace {

std::string narrow(BSTR text)
{
    std::string result;
    for (UINT i = 0; i < ::SysStringLen(text); ++i) result.push_back(static_cast<char>(text[i]));
    ::SysFreeString(text);
    return result;
}

std::string type_name(const TYPEDESC& type)
{
    static const std::map<VARTYPE, std::string> names{
        {VT_I2, "short"},        {VT_UI1, "byte"},  {VT_BOOL, "boolean"},   {VT_BSTR, "text"},
        {VT_VARIANT, "variant"}, {VT_VOID, "void"}, {VT_HRESULT, "HRESULT"}};
    if (type.vt == VT_PTR) return type_name(*type.lptdesc) + "&";
    const auto found = names.find(type.vt);
    return found != names.end() ? found->second : "type " + std::to_string(type.vt);
}

std::string flags_of(USHORT flags)
{
    std::string text;
    if ((flags & PARAMFLAG_FIN) != 0) text += "in ";
    if ((flags & PARAMFLAG_FOUT) != 0) text += "out ";
    if ((flags & PARAMFLAG_FRETVAL) != 0) text += "retval ";
    return text;
}

/// "IDENTIFIER NAME(FLAGS TYPE NAME, ...) -> TYPE" of one function.
std::string described(ITypeInfo* info, const FUNCDESC& function)
{
    BSTR names[8] = {};
    UINT count = 0;
    info->GetNames(function.memid, names, 8, &count);
    std::ostringstream text;
    text << std::hex << static_cast<unsigned long>(function.memid) << ' ' << narrow(names[0]) << '(';
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& one = function.lprgelemdescParam[i];
        text << (i > 0 ? ", " : "") << flags_of(one.paramdesc.wParamFlags) << type_name(one.tdesc);
        if (static_cast<UINT>(i + 1) < count) text << ' ' << narrow(names[i + 1]);
    }
    text << ") -> " << type_name(function.elemdescFunc.tdesc);
    return text.str();
}

struct type_library : testing::Test {
    ITypeLib* library = nullptr;
    ITypeInfo* dispatch = nullptr;

    void SetUp() override
    {
        ASSERT_EQ(::LoadTypeLibEx(L"tamrix.dll", REGKIND_NONE, &library), S_OK);
        ASSERT_EQ(library->GetTypeInfoOfGuid(interface_id, &dispatch), S_OK);
    }
    void TearDown() override
    {
        if (dispatch != nullptr) dispatch->Release();
        if (library != nullptr) library->Release();
    }
    static std::string name_of(ITypeInfo* info)
    {
        BSTR name = nullptr;
        info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
        return narrow(name);
    }
};

/// The methods of the class's own, without those that every such interface inherits.
std::vector<std::string> own_methods(ITypeInfo* info)
{
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    const WORD count = attributes->cFuncs;
    info->ReleaseTypeAttr(attributes);
    std::vector<std::string> all;
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        if (FAILED(info->GetFuncDesc(i, &function))) continue;
        if (function->oVft >= static_cast<SHORT>(7 * sizeof(void*))) all.push_back(described(info, *function));
        info->ReleaseFuncDesc(function);
    }
    return all;
}

TEST_F(type_library, describes_the_18_methods_to_late_bound_callers)
{
    const std::vector<std::string> expected{
        "60030000 readfile0(in out text& fname, in out short& rformat, in out text& syspath0) -> variant",
        "60030001 wfile(in out text& fname, in out text& syspath0) -> variant",
        "60030002 algoparameter0() -> void",
        "60030003 analyzer0() -> variant",
        "60030004 recetwave0(in out boolean& fwave) -> variant",
        "60030005 mnutesttestksm() -> void",
        "60030006 mnutestttltest0(in out byte& icsum0, in out boolean& ok0, in out text& syspath0) -> void",
        "60030007 mnuEditeditvector0(in out byte& icsum0, in out boolean& ok0, in out text& syspath0) -> void",
        "60030008 mnutesteditttllib0(in out byte& icsum0, in out boolean& ok0, in out text& syspath0) -> void",
        "60030009 mnutestautofind0(in out text& syspath0) -> void",
        "6003000a warn(in out byte& no, in out boolean& extpower0) -> void",
        "6003000b vecttest0(in out byte& mode, in out byte& ttlcnt0, in out byte& wnote0, in out boolean& ok0) -> void",
        "6003000c readpldfile(in out text& fname) -> variant",
        "6003000d writepldfile(in out text& fname) -> variant",
        "6003000e readsvffile(in out text& fname, in out text& syspath0) -> variant",
        "60030011 bufcomopt(in out short& num) -> void",
        "60030012 buffercomopt(in out short& num) -> void",
        "60030013 freesharebufferopt() -> void"};
    EXPECT_EQ(own_methods(dispatch), expected);
}

TEST_F(type_library, gives_binary_callers_the_same_order_in_the_slots)
{
    HREFTYPE reference = 0;
    ITypeInfo* binary = nullptr;
    ASSERT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    ASSERT_EQ(dispatch->GetRefTypeInfo(reference, &binary), S_OK);
    const char* const names[] = {
        "readfile0",      "wfile",           "algoparameter0",     "analyzer0",          "recetwave0",
        "mnutesttestksm", "mnutestttltest0", "mnuEditeditvector0", "mnutesteditttllib0", "mnutestautofind0",
        "warn",           "vecttest0",       "readpldfile",        "writepldfile",       "readsvffile",
        "bufcomopt",      "buffercomopt",    "freesharebufferopt"};
    for (UINT i = 0; i < 18; ++i) {
        FUNCDESC* function = nullptr;
        ASSERT_EQ(binary->GetFuncDesc(i, &function), S_OK);
        BSTR name = nullptr;
        UINT count = 0;
        binary->GetNames(function->memid, &name, 1, &count);
        EXPECT_EQ(narrow(name), names[i]);
        EXPECT_EQ(function->oVft, static_cast<SHORT>((7 + i) * sizeof(void*)));
        EXPECT_EQ(function->callconv, CC_STDCALL);
        binary->ReleaseFuncDesc(function);
    }
    binary->Release();
}

TEST_F(type_library, names_the_library_the_class_and_its_default_interface)
{
    BSTR name = nullptr;
    library->GetDocumentation(-1, &name, nullptr, nullptr, nullptr);
    EXPECT_EQ(narrow(name), "tamrix");
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == library_id);
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    library->ReleaseTLibAttr(attributes);

    ITypeInfo* the_class = nullptr;
    ASSERT_EQ(library->GetTypeInfoOfGuid(class_id, &the_class), S_OK);
    EXPECT_EQ(name_of(the_class), "Clstamrix");
    INT flags = 0;
    EXPECT_EQ(the_class->GetImplTypeFlags(0, &flags), S_OK);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
    HREFTYPE reference = 0;
    ITypeInfo* implemented = nullptr;
    ASSERT_EQ(the_class->GetRefTypeOfImplType(0, &reference), S_OK);
    ASSERT_EQ(the_class->GetRefTypeInfo(reference, &implemented), S_OK);
    EXPECT_EQ(name_of(implemented), "_Clstamrix");
    implemented->Release();
    the_class->Release();
}

TYPEATTR attributes_of(ITypeInfo* info)
{
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const TYPEATTR copy = *attributes;
    info->ReleaseTypeAttr(attributes);
    return copy;
}

TEST_F(type_library, says_that_the_interface_serves_early_and_late_binding)
{
    const TYPEATTR late = attributes_of(dispatch);
    EXPECT_EQ(late.typekind, TKIND_DISPATCH);
    constexpr WORD both = TYPEFLAG_FDUAL | TYPEFLAG_FDISPATCHABLE | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FHIDDEN;
    EXPECT_EQ(late.wTypeFlags & ~TYPEFLAG_FOLEAUTOMATION, both);  // wine hides that flag from this side
    EXPECT_EQ(late.cVars, 0);
    for (UINT i = 0; i < late.cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        ASSERT_EQ(dispatch->GetFuncDesc(i, &function), S_OK);
        if (function->memid >= 0x60030000) {
            EXPECT_EQ(function->invkind, INVOKE_FUNC);
            EXPECT_EQ(function->cParamsOpt, 0);
            EXPECT_EQ(function->wFuncFlags, 0);
        }
        dispatch->ReleaseFuncDesc(function);
    }
    HREFTYPE reference = 0;
    ITypeInfo* binary = nullptr;
    ASSERT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    ASSERT_EQ(dispatch->GetRefTypeInfo(reference, &binary), S_OK);
    const TYPEATTR early = attributes_of(binary);
    EXPECT_EQ(early.typekind, TKIND_INTERFACE);
    EXPECT_EQ(early.wTypeFlags, both | TYPEFLAG_FOLEAUTOMATION);
    EXPECT_TRUE(early.guid == late.guid);
    binary->Release();
}

TEST_F(type_library, says_that_the_class_can_be_made_and_has_no_second_interface)
{
    ITypeInfo* the_class = nullptr;
    ASSERT_EQ(library->GetTypeInfoOfGuid(class_id, &the_class), S_OK);
    const TYPEATTR attributes = attributes_of(the_class);
    EXPECT_EQ(attributes.typekind, TKIND_COCLASS);
    EXPECT_EQ(attributes.wTypeFlags, TYPEFLAG_FCANCREATE);
    EXPECT_EQ(attributes.cImplTypes, 1);
    the_class->Release();
    EXPECT_EQ(library->GetTypeInfoCount(), 2u) << "the interface and the class";
}

TEST_F(type_library, tells_people_what_it_is)
{
    BSTR help = nullptr;
    ASSERT_EQ(library->GetDocumentation(-1, nullptr, &help, nullptr, nullptr), S_OK);
    EXPECT_EQ(narrow(help), "tamrix option library");
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->syskind, SYS_WIN32);
    EXPECT_EQ(attributes->lcid, 0u);
    library->ReleaseTLibAttr(attributes);
}

TEST_F(type_library, stands_beside_the_dll_as_well_for_compilers)
{
    ITypeLib* beside = nullptr;
    ITypeInfo* info = nullptr;
    ASSERT_EQ(::LoadTypeLibEx(L"tamrix.tlb", REGKIND_NONE, &beside), S_OK);
    ASSERT_EQ(beside->GetTypeInfoOfGuid(interface_id, &info), S_OK);
    EXPECT_EQ(own_methods(info), own_methods(dispatch));
    info->Release();
    beside->Release();
}

}  // namespace
}  // namespace tamrix::tests
