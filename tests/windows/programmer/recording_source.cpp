// The recording programmer at the far end of lumbat.dll and the device object: the tests of the logic IC test, linked
// with this, see every call arrive that way.
#include "programmer/library_symbol.h"
#include "programmer/windows_programmer_win32.h"
#include "recording_lumbat.h"
#include "support/recording_programmer.h"

#include <stdexcept>
#include <string>

#include <windows.h>

#include <objbase.h>

namespace tamrix::tests {

namespace {

constexpr const char* dll = "recording_lumbat.dll";

template <class Function>
Function exported(const char* name)
{
    std::string why;
    void* const library = hw::load_library(dll, why);
    void* const found = library != nullptr ? hw::symbol_of(library, name) : nullptr;
    if (found == nullptr) throw std::runtime_error{std::string{dll} + ": " + name + ": " + why};
    return reinterpret_cast<Function>(found);
}

/// Makes the class known to this process, without the registry.
void serve_class()
{
    CLSID id{};
    const std::string text = recording_class;
    IUnknown* factory = nullptr;
    DWORD cookie = 0;
    using type = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const bool served =
        SUCCEEDED(::CLSIDFromString(std::wstring{text.begin(), text.end()}.c_str(), &id)) &&
        SUCCEEDED(exported<type>("DllGetClassObject")(id, IID_IUnknown, reinterpret_cast<void**>(&factory))) &&
        SUCCEEDED(::CoRegisterClassObject(id, factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie));
    if (factory != nullptr) factory->Release();
    if (!served) throw std::runtime_error{"the class cannot be served"};
}

hw::programmer_source source_of_installation()
{
    serve_class();
    return hw::windows_source({.transport_library = dll, .device_class = recording_class});
}

class over_the_installation final : public hw::programmer {
public:
    explicit over_the_installation(std::unique_ptr<hw::programmer> far_end)
        : far_end_{std::move(far_end)}, near_end_{all()({nullptr, 0})}
    {
        exported<use_programmer_type>("use_programmer")(far_end_.get());
    }
    ~over_the_installation() override { exported<use_programmer_type>("use_programmer")(nullptr); }
    over_the_installation(const over_the_installation&) = delete;
    over_the_installation& operator=(const over_the_installation&) = delete;

    hw::lumbat& transport() override { return near_end_->transport(); }
    hw::devobj& device() override { return near_end_->device(); }

private:
    /// One for all tests, as a host has it.
    static const hw::programmer_source& all()
    {
        static const hw::programmer_source source = source_of_installation();
        return source;
    }

    std::unique_ptr<hw::programmer> far_end_, near_end_;
};

}  // namespace

hw::programmer_source recording_programmer(recording& log)
{
    return [&log](const hw::reply_memory& replies) {
        return std::make_unique<over_the_installation>(make_recorder(log, replies));
    };
}

}  // namespace tamrix::tests
