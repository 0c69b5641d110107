// Hosts that do not keep to the rules: they get errors, and the library goes on.
#include "server.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tamrix.h>

namespace tamrix::tests {
namespace {

constexpr DISPID bufcomopt = 0x60030011, readsvffile = 0x6003000E;

struct bad_habits : testing::Test {
    const server dll;
    const client object{dll};

    void SetUp() override { object.call(L"bufcomopt", {value{short{1}}}); }
    /// The object is in order: it takes a good call.
    void TearDown() override { EXPECT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK); }

    HRESULT invoke(DISPID id, WORD flags, DISPPARAMS parameters) const
    {
        return object.get()->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, nullptr, nullptr, nullptr);
    }
};

TEST_F(bad_habits, of_null_pointers_are_refused_by_every_method)
{
    _Clstamrix* plug_in = nullptr;
    ASSERT_EQ(object.get()->QueryInterface(interface_id, reinterpret_cast<void**>(&plug_in)), S_OK);
    BSTR text = ::SysAllocString(L"x");
    short number = 1;
    BYTE byte = 0;
    VARIANT_BOOL yes = VARIANT_TRUE;
    VARIANT result = plain_variant(VT_EMPTY);
    const HRESULT seen[] = {plug_in->readfile0(nullptr, &number, &text, &result),
                            plug_in->readfile0(&text, nullptr, &text, &result),
                            plug_in->readfile0(&text, &number, nullptr, &result),
                            plug_in->readfile0(&text, &number, &text, nullptr),
                            plug_in->wfile(nullptr, &text, &result),
                            plug_in->wfile(&text, nullptr, &result),
                            plug_in->wfile(&text, &text, nullptr),
                            plug_in->analyzer0(nullptr),
                            plug_in->recetwave0(nullptr, &result),
                            plug_in->recetwave0(&yes, nullptr),
                            plug_in->mnutestttltest0(nullptr, &yes, &text),
                            plug_in->mnutestttltest0(&byte, nullptr, &text),
                            plug_in->mnutestttltest0(&byte, &yes, nullptr),
                            plug_in->mnuEditeditvector0(nullptr, &yes, &text),
                            plug_in->mnuEditeditvector0(&byte, nullptr, &text),
                            plug_in->mnuEditeditvector0(&byte, &yes, nullptr),
                            plug_in->mnutesteditttllib0(nullptr, &yes, &text),
                            plug_in->mnutesteditttllib0(&byte, nullptr, &text),
                            plug_in->mnutesteditttllib0(&byte, &yes, nullptr),
                            plug_in->mnutestautofind0(nullptr),
                            plug_in->warn(nullptr, &yes),
                            plug_in->warn(&byte, nullptr),
                            plug_in->vecttest0(nullptr, &byte, &byte, &yes),
                            plug_in->vecttest0(&byte, nullptr, &byte, &yes),
                            plug_in->vecttest0(&byte, &byte, nullptr, &yes),
                            plug_in->vecttest0(&byte, &byte, &byte, nullptr),
                            plug_in->readpldfile(nullptr, &result),
                            plug_in->readpldfile(&text, nullptr),
                            plug_in->writepldfile(nullptr, &result),
                            plug_in->writepldfile(&text, nullptr),
                            plug_in->readsvffile(nullptr, &text, &result),
                            plug_in->readsvffile(&text, nullptr, &result),
                            plug_in->readsvffile(&text, &text, nullptr),
                            plug_in->bufcomopt(nullptr),
                            plug_in->buffercomopt(nullptr)};
    for (std::size_t i = 0; i < std::size(seen); ++i) EXPECT_EQ(seen[i], E_POINTER) << "call " << i;
    ::SysFreeString(text);
    plug_in->Release();
}

TEST_F(bad_habits, of_null_texts_are_empty_texts)
{
    _Clstamrix* plug_in = nullptr;
    ASSERT_EQ(object.get()->QueryInterface(interface_id, reinterpret_cast<void**>(&plug_in)), S_OK);
    BSTR none = nullptr;
    VARIANT result = plain_variant(VT_EMPTY);
    EXPECT_EQ(plug_in->readsvffile(&none, &none, &result), S_OK);
    EXPECT_EQ(result.vt, VT_I2);
    EXPECT_EQ(plug_in->readpldfile(&none, &result), S_OK);
    EXPECT_EQ(result.vt, VT_EMPTY);
    plug_in->Release();
}

TEST_F(bad_habits, of_too_few_and_too_many_arguments_are_told_as_such)
{
    const value text{L"x"};
    EXPECT_EQ(object.call(L"readsvffile", {text}).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.call(L"readsvffile", {text, text, text}).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.call(L"freesharebufferopt", {text}).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.call(L"readfile0").result, DISP_E_BADPARAMCOUNT);
}

TEST_F(bad_habits, of_arguments_that_are_announced_and_not_there_are_refused)
{
    value text{L"x"};
    DISPID name = 0;
    EXPECT_EQ(invoke(bufcomopt, DISPATCH_METHOD, {nullptr, nullptr, 1, 0}), E_INVALIDARG);
    EXPECT_EQ(invoke(bufcomopt, DISPATCH_METHOD, {&text, nullptr, 1, 1}), E_INVALIDARG);
    EXPECT_EQ(invoke(bufcomopt, DISPATCH_METHOD, {nullptr, &name, 0, 1}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(invoke(bufcomopt, DISPATCH_METHOD, {nullptr, nullptr, 0xFFFFFFFF, 0xFFFFFFFF}), DISP_E_BADPARAMCOUNT);
}

TEST_F(bad_habits, of_types_that_are_no_number_are_a_mismatch)
{
    for (const VARTYPE type : {VT_NULL, VT_DISPATCH, VT_UNKNOWN, VT_ERROR, VT_RECORD, VT_BSTR}) {
        EXPECT_TRUE(FAILED(object.call(L"bufcomopt", {plain_variant(type)}).result)) << type;
    }
    for (const VARTYPE strange :
         {0x0FFF, 0x00FF, VT_ARRAY | VT_I2, VT_BYREF | VT_ARRAY | VT_I2, VT_VECTOR | VT_I2, 0xFFFF})
        EXPECT_TRUE(FAILED(object.call(L"bufcomopt", {plain_variant(static_cast<VARTYPE>(strange))}).result))
            << strange;
    EXPECT_EQ(object.call(L"bufcomopt", {plain_variant(VT_EMPTY)}).result, S_OK) << "nothing is 0";
}

TEST_F(bad_habits, of_references_of_another_type_are_read_as_what_they_are)
{
    VARIANT number = plain_variant(VT_BYREF | VT_R8);
    double real = 1.0;
    number.pdblVal = &real;
    EXPECT_EQ(object.call(L"bufcomopt", {number}).result, S_OK);
    real = 1e300;
    EXPECT_EQ(object.call(L"bufcomopt", {number}).result, DISP_E_OVERFLOW);
    EXPECT_EQ(real, 1e300);
    BSTR word = ::SysAllocString(L"one");
    EXPECT_EQ(object.call(L"bufcomopt", {reference_to(word)}).result, DISP_E_TYPEMISMATCH);
    ::SysFreeString(word);
    VARIANT inner = plain_variant(VT_I2), middle = reference_to(inner);
    EXPECT_TRUE(FAILED(object.call(L"bufcomopt", {reference_to(middle)}).result)) << "a reference to a reference";
    VARIANT nowhere = plain_variant(VT_BYREF | VT_VARIANT);
    nowhere.pvarVal = nullptr;
    EXPECT_EQ(object.call(L"bufcomopt", {nowhere}).result, E_POINTER);
}

TEST_F(bad_habits, of_named_arguments_work_where_each_parameter_is_named_once)
{
    value folder{L"C:\\nowhere\\"}, file{L"missing.svf"};
    const auto named = [&](std::vector<DISPID> ids, std::vector<VARIANT> values) {
        return invoke(readsvffile, DISPATCH_METHOD,
                      {values.data(), ids.data(), static_cast<UINT>(values.size()), static_cast<UINT>(ids.size())});
    };
    EXPECT_EQ(named({0, 1}, {file, folder}), S_OK);
    EXPECT_EQ(named({1, 0}, {folder, file}), S_OK);
    EXPECT_EQ(named({1}, {folder, file}), S_OK) << "the named one stands first";
    EXPECT_EQ(named({0, 0}, {file, file}), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(named({0}, {file, file}), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(named({0, 2}, {file, folder}), DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(named({DISPID_PROPERTYPUT}, {file, folder}), DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(named({1, 0, 0}, {folder, file}), DISP_E_BADPARAMCOUNT);
}

TEST_F(bad_habits, of_property_flags_work_beside_the_flag_of_a_method_only)
{
    value number{short{1}};
    EXPECT_EQ(invoke(bufcomopt, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {&number, nullptr, 1, 0}), S_OK)
        << "what scripts send where a result is wanted";
    for (const WORD flags : {DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF, 0})
        EXPECT_TRUE(FAILED(invoke(bufcomopt, flags, {&number, nullptr, 1, 0}))) << flags;
}

TEST_F(bad_habits, of_unknown_methods_are_told_as_such)
{
    for (const DISPID id : {0, -1, 0x6002FFFF, 0x6003000F, 0x60030010, 0x60030014, 0x7FFFFFFF})
        EXPECT_EQ(invoke(id, DISPATCH_METHOD, {nullptr, nullptr, 0, 0}), DISP_E_MEMBERNOTFOUND) << std::hex << id;
    EXPECT_EQ(object.get()->Invoke(bufcomopt, IID_IUnknown, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(bad_habits, of_names_that_are_null_are_refused)
{
    DISPID id = 0;
    wchar_t* none[] = {nullptr};
    EXPECT_EQ(object.get()->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_POINTER);
    EXPECT_EQ(object.get()->GetIDsOfNames(IID_NULL, none, 1, 0, nullptr), E_POINTER);
    EXPECT_EQ(object.get()->GetIDsOfNames(IID_NULL, none, 1, 0, &id), E_POINTER);
    EXPECT_EQ(object.get()->GetIDsOfNames(IID_IUnknown, none, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
}

TEST_F(bad_habits, of_work_before_the_blocks_are_attached_fail_with_a_reason)
{
    dll.can_unload_now();
    EXPECT_EQ(object.call(L"freesharebufferopt").result, S_OK);
    EXPECT_EQ(object.call(L"freesharebufferopt").result, S_OK) << "twice changes nothing";
    EXPECT_EQ(object.call(L"readpldfile", {value{L"missing.jed"}}).result, S_OK);
    EXPECT_EQ(object.call(L"buffercomopt", {value{short{1}}}).result, S_OK);
    EXPECT_EQ(object.call(L"buffercomopt", {value{short{1}}}).result, S_OK) << "so does this";
    EXPECT_EQ(object.call(L"freesharebufferopt").result, S_OK);
}

}  // namespace
}  // namespace tamrix::tests
