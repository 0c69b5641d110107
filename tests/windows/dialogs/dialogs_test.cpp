// The dialogs in a host that knows no wxWidgets and has a window of its own.
#include "com/host_block.h"
#include "com/server.h"
#include "dialogs/onlooker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <objbase.h>

namespace tamrix::tests {
namespace {

struct dialogs : testing::Test {
    const server dll;
    const host_block language{"qorfanLanguage3", 40};
    const value file{L"missing.hex"}, folder{L""}, format{short{1}};

    outcome load(const client& plug_in) const { return plug_in.call(L"readfile0", {file, format, folder}); }
    static void attach(const client& plug_in)
    {
        ASSERT_EQ(plug_in.call(L"bufcomopt", {value{short{3}}}).result, S_OK);
        ASSERT_EQ(plug_in.call(L"buffercomopt", {value{short{3}}}).result, S_OK);
    }
};

/// The main window of a host: a plain window of the system.
class main_window {
public:
    main_window()
        : handle_{::CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                    nullptr, nullptr, nullptr)}
    {
        ::SetForegroundWindow(handle_);
        ::SetActiveWindow(handle_);
    }
    ~main_window() { ::DestroyWindow(handle_); }
    main_window(const main_window&) = delete;
    main_window& operator=(const main_window&) = delete;
    HWND handle() const { return handle_; }

private:
    HWND handle_;
};

TEST_F(dialogs, stand_before_the_window_of_the_host_which_takes_no_input_meanwhile)
{
    const client plug_in{dll};
    attach(plug_in);
    const main_window host;
    HWND owner = nullptr;
    bool worked_meanwhile = true;
    const onlooker person{L"Load A File To Buffer", [&](HWND dialog) {
                              owner = ::GetWindow(dialog, GW_OWNER);
                              worked_meanwhile = ::IsWindowEnabled(host.handle()) != FALSE;
                          }};
    EXPECT_EQ(load(plug_in).result, S_OK);
    EXPECT_EQ(owner, host.handle());
    EXPECT_FALSE(worked_meanwhile);
    EXPECT_NE(::IsWindowEnabled(host.handle()), FALSE);
    EXPECT_EQ(::GetActiveWindow(), host.handle());
}

int ticks_seen = 0;

void CALLBACK count_tick(HWND, UINT, UINT_PTR, DWORD) { ++ticks_seen; }

TEST_F(dialogs, keep_the_timers_of_the_host_alive)
{
    const client plug_in{dll};
    attach(plug_in);
    const main_window host;
    ticks_seen = 0;
    const UINT_PTR timer = ::SetTimer(host.handle(), 1, 20, count_tick);
    const onlooker person{L"Load A File To Buffer", [](HWND) { ::Sleep(500); }};
    EXPECT_EQ(load(plug_in).result, S_OK);
    ::KillTimer(host.handle(), timer);
    EXPECT_GE(ticks_seen, 5);
}

TEST_F(dialogs, on_a_second_thread_fail_with_a_text)
{
    const client plug_in{dll};
    attach(plug_in);
    {
        const onlooker person{L"Load A File To Buffer", [](HWND) {}};
        EXPECT_EQ(load(plug_in).result, S_OK);
    }
    outcome seen;
    std::thread{[&] {
        ::CoInitialize(nullptr);
        {
            const client other{dll};
            seen = load(other);
        }
        ::CoUninitialize();
    }}.join();
    EXPECT_EQ(seen.result, DISP_E_EXCEPTION);
    EXPECT_EQ(seen.error, L"dialogs can be shown on one thread only, that of the first dialog");
}

TEST_F(dialogs, let_the_library_be_unloaded_and_loaded_anew)
{
    DWORD before = 0, after = 0;
    constexpr int warm_up = 3, rounds = 12;
    for (int round = 0; round < rounds; ++round) {
        {
            const server loaded;
            {
                const client plug_in{loaded};
                attach(plug_in);
                const onlooker person{L"Load A File To Buffer", [](HWND) {}};
                EXPECT_EQ(load(plug_in).result, S_OK);
                EXPECT_EQ(loaded.can_unload_now(), S_FALSE);
            }
            EXPECT_EQ(loaded.can_unload_now(), S_OK);
        }
        ::GetProcessHandleCount(::GetCurrentProcess(), round == warm_up ? &before : &after);
    }
    EXPECT_LE(after, before + 2);
}

/// The texts of a language file by their numbers.
std::map<int, std::wstring> messages_of(const std::string& name)
{
    std::ifstream file{"messages/" + name + ".txt"};
    std::map<int, std::wstring> texts;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] < '0' || line[0] > '9') continue;
        const std::size_t open = line.find('"'), close = line.rfind('"');
        std::string text = line.substr(open + 1, close - open - 1);
        for (std::size_t at = 0; (at = text.find('\\', at)) != std::string::npos; ++at) text.erase(at, 1);
        std::wstring wide(text.size(), L'\0');
        wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                                                   static_cast<int>(text.size()), wide.data(),
                                                                   static_cast<int>(wide.size()))));
        texts[std::stoi(line)] = wide;
    }
    return texts;
}

std::wstring trimmed(const std::wstring& text)
{
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring::npos ? L"" : text.substr(first, text.find_last_not_of(L' ') + 1 - first);
}

struct language {
    const char* file;
    int offset;
};

struct in_every_language : dialogs, testing::WithParamInterface<language> {};

TEST_P(in_every_language, the_texts_reach_the_windows_as_they_stand_in_its_file)
{
    const auto texts = messages_of(GetParam().file);
    ASSERT_GE(texts.size(), 146u);
    const client plug_in{dll};
    attach(plug_in);
    *language.as<LONG>() = GetParam().offset;
    std::vector<std::wstring> seen;
    const onlooker person{texts.at(1115), [&](HWND dialog) {
                              for (const HWND child : seen_in(dialog)) seen.push_back(text_of(child));
                          }};
    EXPECT_EQ(load(plug_in).result, S_OK);
    *language.as<LONG>() = 0;
    for (const int number : {1107, 1117, 1118, 1119, 1120, 1121, 1122, 1125, 1126, 1309, 1067, 1068}) {
        EXPECT_NE(std::ranges::find(seen, trimmed(texts.at(number))), seen.end()) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(windows, in_every_language,
                         testing::Values(language{"english", 0}, language{"simplified_chinese", 3000},
                                         language{"traditional_chinese", 6000}, language{"korean", 9000},
                                         language{"polish", 12000}, language{"english", 15000},
                                         language{"italian", 18000}, language{"dutch", 21000},
                                         language{"portuguese", 24000}, language{"turkish", 27000},
                                         language{"hungarian", 30000}, language{"russian", 33000}),
                         [](const auto& one) { return one.param.file + std::to_string(one.param.offset); });

}  // namespace
}  // namespace tamrix::tests
