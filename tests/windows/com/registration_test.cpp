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

/// Every key and value below a key, a line each.
void collect(HKEY root, const std::wstring& path, std::vector<std::wstring>& lines)
{
    HKEY key = nullptr;
    if (::RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    std::vector<std::wstring> below;
    wchar_t name[256];
    for (DWORD i = 0, length = 256; ::RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == 0;
         ++i, length = 256) {
        below.emplace_back(name, length);
    }
    for (DWORD i = 0, length = 256; ::RegEnumValueW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == 0;
         ++i, length = 256) {
        lines.push_back(path + L" = " + std::wstring(name, length));
    }
    ::RegCloseKey(key);
    for (const std::wstring& one : below) {
        lines.push_back(path + L"\\" + one);
        collect(root, path + L"\\" + one, lines);
    }
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
