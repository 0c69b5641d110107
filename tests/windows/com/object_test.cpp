#include "host_block.h"
#include "server.h"

#include <gtest/gtest.h>

#include <string>

#include <oaidl.h>

namespace tamrix::tests {
namespace {

struct com_object : testing::Test {
    const server dll;
};

TEST_F(com_object, keeps_the_library_until_the_last_reference_is_gone)
{
    EXPECT_EQ(dll.can_unload_now(), S_OK);
    {
        const client object{dll};
        EXPECT_EQ(dll.can_unload_now(), S_FALSE);
        EXPECT_EQ(object.get()->AddRef(), 2u);
        EXPECT_EQ(object.get()->Release(), 1u);
    }
    EXPECT_EQ(dll.can_unload_now(), S_OK);
}

TEST_F(com_object, is_one_identity_under_its_interfaces)
{
    const client object{dll};
    IUnknown *identity = nullptr, *other = nullptr;
    ASSERT_EQ(object.get()->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity)), S_OK);
    for (const GUID& one : {IID_IDispatch, interface_id, IID_ISupportErrorInfo}) {
        IUnknown* found = nullptr;
        ASSERT_EQ(object.get()->QueryInterface(one, reinterpret_cast<void**>(&found)), S_OK);
        ASSERT_EQ(found->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&other)), S_OK);
        EXPECT_EQ(identity, other);
        other->Release();
        found->Release();
    }
    EXPECT_EQ(object.get()->QueryInterface(IID_IClassFactory, reinterpret_cast<void**>(&other)), E_NOINTERFACE);
    EXPECT_EQ(other, nullptr);
    identity->Release();
}

TEST_F(com_object, comes_from_a_factory_that_knows_one_class_and_can_be_locked)
{
    IClassFactory* factory = nullptr;
    const auto place = reinterpret_cast<void**>(&factory);
    EXPECT_EQ(dll.get_class_object(interface_id, IID_IClassFactory, place), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(dll.get_class_object(class_id, IID_IDispatch, place), E_NOINTERFACE);
    EXPECT_EQ(dll.can_unload_now(), S_OK);
    ASSERT_EQ(dll.get_class_object(class_id, IID_IClassFactory, place), S_OK);
    EXPECT_EQ(dll.can_unload_now(), S_FALSE);
    void* made = &factory;
    EXPECT_EQ(factory->CreateInstance(factory, IID_IUnknown, &made), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &made), E_NOINTERFACE);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory->Release();
    EXPECT_EQ(dll.can_unload_now(), S_FALSE);
    ASSERT_EQ(dll.get_class_object(class_id, IID_IClassFactory, place), S_OK);
    factory->LockServer(FALSE);
    factory->Release();
    EXPECT_EQ(dll.can_unload_now(), S_OK);
}

TEST_F(com_object, finds_its_methods_and_parameters_by_name_without_regard_to_case)
{
    const client object{dll};
    EXPECT_EQ(object.id_of(L"readfile0"), 0x60030000);
    EXPECT_EQ(object.id_of(L"READSVFFILE"), 0x6003000E);
    EXPECT_EQ(object.id_of(L"bufcomopt"), 0x60030011);
    EXPECT_EQ(object.id_of(L"freesharebufferopt"), 0x60030013);
    EXPECT_EQ(object.id_of(L"readfile"), DISPID_UNKNOWN);
    std::wstring method = L"readfile0", third = L"syspath0";
    wchar_t* names[] = {method.data(), third.data()};
    DISPID ids[2] = {};
    EXPECT_EQ(object.get()->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), S_OK);
    EXPECT_EQ(ids[1], 2);
}

TEST_F(com_object, takes_numbers_as_values_and_by_reference_and_leaves_them)
{
    const client object{dll};
    EXPECT_EQ(object.call(L"bufcomopt", {value{short{1}}}).result, S_OK);
    short number = 1;
    EXPECT_EQ(object.call(L"bufcomopt", {reference_to(number)}).result, S_OK);
    EXPECT_EQ(number, 1);
    VARIANT wide = plain_variant(VT_I4);
    wide.lVal = 1;
    EXPECT_EQ(object.call(L"bufcomopt", {wide}).result, S_OK) << "a script's own width";
    EXPECT_EQ(object.call(L"bufcomopt", {reference_to(wide)}).result, S_OK);
    EXPECT_EQ(wide.vt, VT_I4);
    wide.lVal = 70000;
    EXPECT_EQ(object.call(L"bufcomopt", {wide}).result, DISP_E_OVERFLOW);
    const value word{L"x"};
    EXPECT_EQ(object.call(L"bufcomopt", {word}).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(object.call(L"bufcomopt").result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.call(L"bufcomopt", {reference_to(number), reference_to(number)}).result, DISP_E_BADPARAMCOUNT);
}

TEST_F(com_object, takes_texts_as_values_by_reference_and_in_variables_and_leaves_them)
{
    const client object{dll};
    object.call(L"bufcomopt", {value{short{1}}});
    BSTR file = ::SysAllocString(L"Größe 電.svf"), folder = ::SysAllocString(L"C:\\nowhere\\");
    value variable{L"missing.svf"};
    const value literal{L"C:\\nowhere\\"};
    for (const VARIANT& name : {reference_to(file), reference_to(variable), static_cast<VARIANT>(variable)}) {
        for (const VARIANT& path : {reference_to(folder), static_cast<VARIANT>(literal)}) {
            const outcome seen = object.call(L"readsvffile", {name, path});
            EXPECT_EQ(seen.result, S_OK);
            EXPECT_EQ(seen.type, VT_I2);
        }
    }
    EXPECT_STREQ(file, L"Größe 電.svf");
    EXPECT_STREQ(variable.bstrVal, L"missing.svf");
    ::SysFreeString(file);
    ::SysFreeString(folder);
    BSTR none = nullptr;
    EXPECT_EQ(object.call(L"readpldfile", {reference_to(none)}).result, S_OK) << "a null text is the empty one";
}

TEST_F(com_object, writes_a_number_that_a_method_changed_to_the_variable_of_the_caller)
{
    const client object{dll};
    object.call(L"bufcomopt", {value{short{1}}});
    // Note 0 shows nothing; its bit 7 is cleared where the caller holds it.
    short number = 128;
    BYTE byte = 128;
    VARIANT of_byte = plain_variant(VT_BYREF | VT_UI1), real = plain_variant(VT_R8), whole = plain_variant(VT_I4);
    of_byte.pbVal = &byte;
    real.dblVal = 128;
    whole.lVal = 128;
    value text{L"128"};
    const value yes{short{-1}}, literal{short{128}};
    for (const VARIANT& given : {reference_to(number), of_byte, reference_to(real), reference_to(whole),
                                 reference_to(text), static_cast<VARIANT>(literal)}) {
        EXPECT_EQ(object.call(L"warn", {given, yes}).result, S_OK);
    }
    EXPECT_EQ(number, 0);
    EXPECT_EQ(byte, 0);
    EXPECT_EQ(real.dblVal, 0);
    EXPECT_EQ(whole.lVal, 0);
    EXPECT_STREQ(text.bstrVal, L"128") << "a text stays a text";
    EXPECT_EQ(literal.iVal, 128);
}

TEST_F(com_object, gives_an_empty_variant_where_a_method_has_nothing_to_tell)
{
    const client object{dll};
    object.call(L"bufcomopt", {value{short{1}}});
    const value file{L"missing.jed"};
    const outcome seen = object.call(L"readpldfile", {file});
    EXPECT_EQ(seen.result, S_OK);
    EXPECT_EQ(seen.type, VT_EMPTY);
}

TEST_F(com_object, tells_why_a_call_failed)
{
    const client object{dll};
    object.call(L"bufcomopt", {value{short{1}}});
    const host_block language{"qorfanLanguage1", 40};
    *language.as<LONG>() = 999;
    const value file{L"x.hex"}, folder{L"C:\\"}, format{short{0}};
    const outcome seen = object.call(L"readfile0", {file, format, folder});
    *language.as<LONG>() = 0;
    EXPECT_EQ(seen.result, DISP_E_EXCEPTION);
    EXPECT_TRUE(seen.error.starts_with(L"no text with number ")) << std::string(seen.error.begin(), seen.error.end());
    EXPECT_EQ(seen.source, L"tamrix.Clstamrix");
}

TEST_F(com_object, refuses_null_pointers)
{
    const client object{dll};
    EXPECT_EQ(object.get()->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(object.get()->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    ITypeInfo* info = nullptr;
    EXPECT_EQ(object.get()->GetTypeInfo(1, 0, &info), DISP_E_BADINDEX);
    EXPECT_EQ(object.get()->GetTypeInfo(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(object.get()->Invoke(0x60030011, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_POINTER);
    VARIANT nowhere = plain_variant(VT_BYREF | VT_BSTR);
    nowhere.pbstrVal = nullptr;
    EXPECT_TRUE(FAILED(object.call(L"readpldfile", {nowhere}).result));
}

}  // namespace
}  // namespace tamrix::tests
