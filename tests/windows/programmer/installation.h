// A host's installation with the simulated programmer: lumbat.dll in the current folder, its class registered.
#pragma once

#include "tamrix/simulator.h"

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>

namespace tamrix::tests {

class installation {
public:
    installation() { call("DllRegisterServer"); }
    ~installation() { call("DllUnregisterServer"); }
    installation(const installation&) = delete;
    installation& operator=(const installation&) = delete;

    /// Changes the socket or the faults of the programmer, which has been used before.
    void change(const std::string& entries) const
    {
        std::array<char, 512> error{};
        auto* const act = exported<decltype(&tamrix_simulator_change)>("tamrix_simulator_change");
        if (act(entries.c_str(), error.data(), error.size()) != TAMRIX_SIMULATOR_DONE)
            throw std::runtime_error{entries + ": " + error.data()};
    }
    /// What could have done harm since the last call.
    std::vector<std::string> hazards() const
    {
        std::vector<std::string> texts;
        exported<decltype(&tamrix_simulator_hazards)>("tamrix_simulator_hazards")(
            [](void* into, const char* text) { static_cast<std::vector<std::string>*>(into)->emplace_back(text); },
            &texts);
        return texts;
    }
    template <class Function>
    Function exported(const char* name) const
    {
        const FARPROC found = ::GetProcAddress(module_, name);
        if (found == nullptr) throw std::runtime_error{std::string{"lumbat.dll does not export "} + name};
        return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
    }

private:
    void call(const char* name) const
    {
        if (FAILED(exported<HRESULT(WINAPI*)()>(name)())) throw std::runtime_error{std::string{name} + " failed"};
    }

    HMODULE module_ = ::LoadLibraryA("lumbat.dll");  // never unloaded
};

}  // namespace tamrix::tests
