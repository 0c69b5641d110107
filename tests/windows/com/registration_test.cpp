#include "server.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include <objbase.h>

namespace tamrix::tests {
namespace {

/// Every key and value below an open key, a line each. `path` is its name.
void collect_open(HKEY key, const std::wstring& path, std::vector<std::wstring>& lines)
{
    std::vector<std::wstring> below;
    wchar_t name[256];
    for (DWORD i = 0, length = 256; ::RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == 0;
         ++i, length = 256) {
        below.emplace_back(name, length);
    }
    std::vector<BYTE> data(65536);
    for (DWORD i = 0, length = 256, type = 0, bytes = 65536;
         ::RegEnumValueW(key, i, name, &length, nullptr, &type, data.data(), &bytes) == 0;
         ++i, length = 256, bytes = 65536) {
        std::wstring line = path + L" = " + std::wstring{name, length} + L" = " + std::to_wstring(type) + L":";
        line.append(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(bytes));
        lines.push_back(line);
    }
    for (const std::wstring& one : below) {
        HKEY opened = nullptr;
        const std::wstring whole = path + L"\\" + one;
        lines.push_back(whole);
        if (::RegOpenKeyExW(key, one.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) continue;
        collect_open(opened, whole, lines);
        ::RegCloseKey(opened);
    }
}

/// The same for a key by its path.
void collect(HKEY root, const std::wstring& path, std::vector<std::wstring>& lines)
{
    HKEY key = nullptr;
    if (::RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    lines.push_back(path);
    collect_open(key, path, lines);
    ::RegCloseKey(key);
}

/// All that is registered, for the machine and for the user.
std::vector<std::wstring> registered()
{
    std::vector<std::wstring> lines{L"-- machine"};
    collect(HKEY_LOCAL_MACHINE, L"Software\\Classes", lines);
    lines.push_back(L"-- user");
    collect(HKEY_CURRENT_USER, L"Software\\Classes", lines);
    return lines;
}

/// What there is of this class for the machine, and all that there is for the user: enough where the machine's other
/// keys are looked at elsewhere, since reading them all takes seconds.
std::vector<std::wstring> registered_of_this_class()
{
    std::vector<std::wstring> lines{L"-- machine"};
    for (const wchar_t* key :
         {L"tamrix.Clstamrix", L"CLSID\\{0ADDA2F4-4E2B-4280-90F8-8BB90F3DA368}",
          L"Interface\\{1DD33C8D-A6BD-4FC4-BCE4-EA6A65CCAD94}", L"TypeLib\\{434D7521-5186-4A00-B107-726CF87C30C6}"}) {
        collect(HKEY_LOCAL_MACHINE, std::wstring{L"Software\\Classes\\"} + key, lines);
    }
    lines.push_back(L"-- user");
    collect(HKEY_CURRENT_USER, L"Software\\Classes", lines);
    return lines;
}

struct registration : testing::Test {
    const server dll;

    void SetUp() override { take_back(); }
    void TearDown() override { take_back(); }
    void take_back() const
    {
        dll.unregister_server();
        dll.install(false, L"user");
    }
    static HRESULT create_by_name()
    {
        CLSID found{};
        if (const HRESULT unknown = ::CLSIDFromProgID(L"tamrix.Clstamrix", &found); FAILED(unknown)) return unknown;
        EXPECT_TRUE(found == class_id);
        IDispatch* made = nullptr;
        const HRESULT result =
            ::CoCreateInstance(found, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&made));
        if (SUCCEEDED(result)) made->Release();
        return result;
    }
};

TEST_F(registration, of_the_machine_makes_the_class_known_by_name)
{
    EXPECT_NE(create_by_name(), S_OK);
    EXPECT_EQ(dll.register_server(), S_OK);
    EXPECT_EQ(create_by_name(), S_OK);
}

/// The keys below one root that one registration adds.
std::vector<std::wstring> added(HKEY root, const std::function<void()>& registering)
{
    std::vector<std::wstring> before, after, fresh;
    collect(root, L"Software\\Classes", before);
    registering();
    collect(root, L"Software\\Classes", after);
    for (auto* lines : {&before, &after}) {
        for (std::wstring& line : *lines) ::CharLowerW(line.data());  // keys that stood there keep their own case
        std::ranges::sort(*lines);
    }
    std::ranges::set_difference(after, before, std::back_inserter(fresh));
    return fresh;
}

// The wine that the tests run on finds classes of the machine only, so the keys are looked at instead.
TEST_F(registration, of_the_user_writes_what_that_of_the_machine_writes)
{
    const auto of_machine = added(HKEY_LOCAL_MACHINE, [&] { EXPECT_EQ(dll.register_server(), S_OK); });
    const auto of_user = added(HKEY_CURRENT_USER, [&] { EXPECT_EQ(dll.install(true, L"user"), S_OK); });
    EXPECT_GE(of_machine.size(), 20u);
    for (const std::wstring& line : of_machine) {
        EXPECT_TRUE(std::ranges::binary_search(of_user, line)) << std::string(line.begin(), line.end());
    }
    wchar_t path[MAX_PATH] = {}, own[MAX_PATH] = {};
    DWORD bytes = sizeof path;
    EXPECT_EQ(::RegGetValueW(HKEY_CURRENT_USER,
                             L"Software\\Classes\\CLSID\\{0ADDA2F4-4E2B-4280-90F8-8BB90F3DA368}\\InprocServer32",
                             nullptr, RRF_RT_REG_SZ, nullptr, path, &bytes),
              ERROR_SUCCESS);
    ::GetModuleFileNameW(::GetModuleHandleW(L"tamrix.dll"), own, MAX_PATH);
    EXPECT_STREQ(path, own);
}

TEST_F(registration, leaves_the_registry_as_it_was_when_it_is_taken_back)
{
    const auto before = registered();
    ASSERT_GT(before.size(), 100u);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(dll.register_server(), S_OK);
        EXPECT_EQ(dll.register_server(), S_OK) << "once more changes nothing";
        EXPECT_GT(registered().size(), before.size());
        EXPECT_EQ(dll.unregister_server(), S_OK);
        EXPECT_EQ(registered(), before);
        EXPECT_EQ(dll.install(true, L"user"), S_OK);
        EXPECT_GT(registered().size(), before.size());
        EXPECT_EQ(dll.install(false, L"user"), S_OK);
        EXPECT_EQ(registered(), before);
    }
    EXPECT_EQ(dll.unregister_server(), S_OK) << "what is not there is no fault";
}

TEST_F(registration, of_the_user_leaves_no_empty_keys_in_a_profile_that_never_had_a_class)
{
    for (const wchar_t* key : {L"CLSID", L"Interface", L"TypeLib"}) {
        ::RegDeleteKeyW(HKEY_CURRENT_USER,
                        (std::wstring{L"Software\\Classes\\"} + key).c_str());  // only if it is empty
    }
    const auto before = registered_of_this_class();
    EXPECT_EQ(dll.install(true, L"user"), S_OK);
    EXPECT_EQ(dll.install(false, L"user"), S_OK);
    EXPECT_EQ(registered_of_this_class(), before);
}

TEST_F(registration, of_the_user_keeps_the_classes_of_others)
{
    const wchar_t* const other = L"Software\\Classes\\CLSID\\{0ADDA2F4-4E2B-4280-90F8-8BB90F3DA369}";
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, other, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr), 0);
    ::RegCloseKey(key);
    const auto before = registered_of_this_class();
    EXPECT_EQ(dll.install(true, L"user"), S_OK);
    EXPECT_EQ(dll.install(false, L"user"), S_OK);
    EXPECT_EQ(registered_of_this_class(), before);
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, other), 0);
}

TEST_F(registration, of_the_machine_and_that_of_the_user_do_not_know_of_each_other)
{
    const auto nobody = registered_of_this_class();
    EXPECT_EQ(dll.register_server(), S_OK);
    const auto machine = registered_of_this_class();
    EXPECT_EQ(dll.install(true, L"user"), S_OK);
    EXPECT_EQ(dll.install(true, L"USER"), S_OK) << "the word in either case";
    const auto both = registered_of_this_class();
    EXPECT_GT(both.size(), machine.size());
    EXPECT_EQ(dll.install(false, L"user"), S_OK);
    EXPECT_EQ(registered_of_this_class(), machine);
    EXPECT_EQ(create_by_name(), S_OK);
    EXPECT_EQ(dll.install(true, L"user"), S_OK);
    EXPECT_EQ(registered_of_this_class(), both);
    EXPECT_EQ(dll.unregister_server(), S_OK);
    EXPECT_GT(registered_of_this_class().size(), nobody.size());
    EXPECT_EQ(dll.install(false, L"user"), S_OK);
    EXPECT_EQ(registered_of_this_class(), nobody);
}

/// Below a key that goes with the session nothing lasting can be created, so the registration ends in its midst.
TEST_F(registration, that_fails_takes_back_what_it_wrote)
{
    const auto before = registered_of_this_class();
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        HKEY key = nullptr;
        ASSERT_EQ(::RegCreateKeyExW(root, L"Software\\Classes\\TypeLib\\{434D7521-5186-4A00-B107-726CF87C30C6}", 0,
                                    nullptr, REG_OPTION_VOLATILE, KEY_WRITE, nullptr, &key, nullptr),
                  0);
        ::RegCloseKey(key);
        const HRESULT failed = HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE);
        EXPECT_EQ(root == HKEY_LOCAL_MACHINE ? dll.register_server() : dll.install(true, L"user"), failed);
        EXPECT_EQ(registered_of_this_class(), before);
    }
    EXPECT_EQ(dll.register_server(), S_OK) << "what stood in the way is gone";
}

TEST_F(registration, of_the_user_touches_nothing_of_the_machine)
{
    std::vector<std::wstring> before, after;
    collect(HKEY_LOCAL_MACHINE, L"Software\\Classes", before);
    EXPECT_EQ(dll.install(true, L"user"), S_OK);
    collect(HKEY_LOCAL_MACHINE, L"Software\\Classes", after);
    EXPECT_EQ(before, after);
}

TEST_F(registration, makes_the_type_library_known)
{
    EXPECT_EQ(dll.register_server(), S_OK);
    ITypeLib* library = nullptr;
    EXPECT_EQ(::LoadRegTypeLib(library_id, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    if (library != nullptr) library->Release();
}

}  // namespace
}  // namespace tamrix::tests
