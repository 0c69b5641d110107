// A person at the screen: person.exe TITLE DEED [TITLE DEED]... waits for a window with that title each time and does
// the deed with the mouse and the keyboard, as a person would. It knows nothing of the window but what it shows.
//   BUTTON     presses the button with this caption
//   keys:TEXT  types; {enter}, {esc}, {tab} and {alt+X} are keys
//   await:TEXT waits until the window shows this text, on nothing that is disabled
//   read       writes the captions and texts in the window, a line each
// Ends with 1 where a window, a button or a key does not exist, and says so in person.log too, since nobody sees the
// output of a program that a script starts.
#include "dialogs/window_texts.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>

using tamrix::tests::seen_in;
using tamrix::tests::text_of;

namespace {

constexpr int patience_ms = 120000, step_ms = 50;

std::string utf8(const std::wstring& text)
{
    std::string out(text.size() * 3 + 1, '\0');
    out.resize(
        static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                       out.data(), static_cast<int>(out.size()), nullptr, nullptr)));
    return out;
}

std::wstring without_mnemonic(std::wstring caption)
{
    std::erase(caption, L'&');
    return caption;
}

/// A person does nothing before it can be done.
template <class Condition>
void wait_until(Condition holds, const std::string& otherwise)
{
    for (int waited = 0; !holds(); waited += step_ms) {
        if (waited >= patience_ms) throw std::runtime_error{otherwise};
        ::Sleep(step_ms);
    }
}

HWND wait_for(const std::wstring& title)
{
    HWND found = nullptr;
    wait_until(
        [&] {
            found = ::FindWindowW(nullptr, title.c_str());
            return found != nullptr && ::IsWindowVisible(found) != FALSE && ::GetForegroundWindow() == found;
        },
        "no window " + utf8(title) + " in front");
    return found;
}

void send(INPUT input)
{
    if (::SendInput(1, &input, sizeof input) != 1) throw std::runtime_error{"the input did not get through"};
    ::Sleep(20);
}

void click(HWND button)
{
    RECT place{};
    ::GetWindowRect(button, &place);
    const POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    wait_until([&] { return ::WindowFromPoint(middle) == button; }, "something covers the button");
    ::SetCursorPos(middle.x, middle.y);
    ::Sleep(step_ms);
    INPUT input{};
    input.type = INPUT_MOUSE;
    for (const DWORD deed : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        input.mi.dwFlags = deed;
        send(input);
    }
}

/// What shows this caption or text and is not disabled; null where there is none.
HWND find(const std::wstring& caption, HWND window)
{
    for (const HWND child : seen_in(window)) {
        if (::IsWindowEnabled(child) != FALSE && without_mnemonic(text_of(child)) == caption) return child;
    }
    return nullptr;
}

void await(const std::wstring& text, HWND window)
{
    wait_until([&] { return find(text, window) != nullptr; }, "nothing shows " + utf8(text));
}

void press(const std::wstring& caption, HWND window)
{
    await(caption, window);
    click(find(caption, window));
}

void key(WORD code, bool with_alt = false)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    const auto stroke = [&](WORD which, DWORD flags) {
        input.ki.wVk = which;
        input.ki.dwFlags = flags;
        send(input);
    };
    if (with_alt) stroke(VK_MENU, 0);
    stroke(code, 0);
    stroke(code, KEYEVENTF_KEYUP);
    if (with_alt) stroke(VK_MENU, KEYEVENTF_KEYUP);
}

void letter(wchar_t which)
{
    const SHORT code = ::VkKeyScanW(which);
    if (code == -1) throw std::runtime_error{"no key for a letter"};
    key(static_cast<WORD>(code & 0xFF));
}

void type(const std::wstring& keys)
{
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::size_t end = keys[i] == L'{' ? keys.find(L'}', i) : std::wstring::npos;
        if (end == std::wstring::npos) {
            letter(keys[i]);
            continue;
        }
        const std::wstring name = keys.substr(i + 1, end - i - 1);
        i = end;
        if (name == L"enter") {
            key(VK_RETURN);
        } else if (name == L"esc") {
            key(VK_ESCAPE);
        } else if (name == L"tab") {
            key(VK_TAB);
        } else if (name.starts_with(L"alt+") && name.size() == 5) {
            key(static_cast<WORD>(::VkKeyScanW(name[4]) & 0xFF), true);
        } else {
            throw std::runtime_error{"no key " + utf8(name)};
        }
    }
}

void read(HWND window)
{
    std::printf("%s\n", utf8(text_of(window)).c_str());
    for (const HWND child : seen_in(window)) std::printf("%s\n", utf8(text_of(child)).c_str());
}

}  // namespace

int wmain(int count, wchar_t** words)
{
    try {
        if (count < 3 || count % 2 == 0) throw std::runtime_error{"wants pairs of a title and a deed"};
        for (int i = 1; i < count; i += 2) {
            const HWND window = wait_for(words[i]);
            const std::wstring deed = words[i + 1];
            if (deed == L"read") {
                read(window);
            } else if (deed.starts_with(L"await:")) {
                await(deed.substr(6), window);
            } else if (deed.starts_with(L"keys:")) {
                type(deed.substr(5));
            } else {
                press(deed, window);
            }
        }
        return 0;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "person: %s\n", fault.what());
        std::ofstream{"person.log", std::ios::app} << fault.what() << "\n";
        return 1;
    }
}
