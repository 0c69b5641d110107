#include "programmer/loaded_programmer.h"

#include "programmer/library_symbol.h"
#include "tamrix/hardware.h"

#include <array>
#include <type_traits>
#include <utility>

namespace tamrix::hw {

namespace {

using table = tamrix_hardware;

class loaded_lumbat final : public lumbat {
public:
    loaded_lumbat(const table& functions, tamrix_programmer* which) : table_{functions}, which_{which} {}

    std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) override
    {
        return table_.usbcomwrite(which_, buffer, length);
    }
    std::int32_t usbbulkwrite(const std::uint8_t* buffer, std::int32_t length) override
    {
        return table_.usbbulkwrite(which_, buffer, length);
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        return table_.usbbulkread(which_, buffer, length, status);
    }

private:
    const table& table_;
    tamrix_programmer* which_;
};

class loaded_devobj final : public devobj {
public:
    loaded_devobj(const table& functions, tamrix_programmer* which) : table_{functions}, which_{which} {}

private:
    template <class Result, class... Wanted>
    auto operation(tamrix_result (*function)(tamrix_programmer*, Wanted...))
    {
        return [this, function](auto... given) {
            if constexpr (std::is_void_v<Result>) {
                check(function(which_, given...));
            } else {
                std::int32_t answer = 0;
                check(function(which_, given..., &answer));
                return static_cast<Result>(answer);
            }
        };
    }
    void check(tamrix_result result) const
    {
        if (result != 0) throw programmer_error{table_.error_text(which_)};
    }

    const table& table_;
    tamrix_programmer* which_;

public:
#define TAMRIX_OPERATION(result, name, parameters, arguments)                                                          \
    result name parameters override { return operation<result>(table_.name) arguments; }
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)
#undef TAMRIX_OPERATION
};

class loaded_programmer final : public programmer {
public:
    loaded_programmer(const table& functions, tamrix_programmer* which)
        : table_{functions}, which_{which}, transport_{functions, which}, device_{functions, which}
    {}
    ~loaded_programmer() override { table_.destroy(which_); }
    loaded_programmer(const loaded_programmer&) = delete;
    loaded_programmer& operator=(const loaded_programmer&) = delete;

    lumbat& transport() override { return transport_; }
    devobj& device() override { return device_; }

private:
    const table& table_;
    tamrix_programmer* which_;
    loaded_lumbat transport_;
    loaded_devobj device_;
};

[[noreturn]] void fail(const std::string& path, const std::string& why)
{
    throw programmer_error{"programmer library " + path + ": " + why};
}

void check_functions(const std::string& path, const table& found)
{
#define TAMRIX_OPERATION(result, name, parameters, arguments) {#name, found.name != nullptr},
    const std::pair<const char*, bool> functions[] = {{"create", found.create != nullptr},
                                                      {"destroy", found.destroy != nullptr},
                                                      {"error_text", found.error_text != nullptr},
                                                      {"usbcomwrite", found.usbcomwrite != nullptr},
                                                      {"usbbulkwrite", found.usbbulkwrite != nullptr},
                                                      {"usbbulkread", found.usbbulkread != nullptr},
                                                      TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)};
#undef TAMRIX_OPERATION
    for (const auto& [name, there] : functions) {
        if (!there) fail(path, std::string{"has no function "} + name);
    }
}

const table& functions_of(const std::string& path)
{
    if (path.empty()) fail("\"\"", "no file is named");
    std::string why;
    void* const library = load_library(path, why);
    if (library == nullptr) fail(path, why);
    void* const symbol = symbol_of(library, TAMRIX_HARDWARE_SYMBOL);
    if (symbol == nullptr) fail(path, "is no programmer library: it has no " TAMRIX_HARDWARE_SYMBOL);
    const table* const found = reinterpret_cast<tamrix_hardware_functions_type>(symbol)();
    if (found == nullptr) fail(path, "yields no functions");
    if (found->version != TAMRIX_HARDWARE_VERSION) {
        fail(path, "has version " + std::to_string(found->version) + " of the interface in tamrix/hardware.h where " +
                       std::to_string(TAMRIX_HARDWARE_VERSION) + " is needed; " +
                       (found->version < TAMRIX_HARDWARE_VERSION ? "the library" : "this program") + " is too old");
    }
    if (found->size_bytes < sizeof(table)) fail(path, "has too short a table of functions");
    check_functions(path, *found);
    return *found;
}

std::unique_ptr<programmer> load(const std::string& path, const std::string& options, const reply_memory& replies)
{
    const table& functions = functions_of(path);
    const tamrix_reply_memory memory{.size_bytes = sizeof(tamrix_reply_memory),
                                     .ibuf1 = replies.ibuf1,
                                     .ibuf1_length = replies.ibuf1_length,
                                     .usbpip0readresult = replies.usbpip0readresult,
                                     .ubuf1 = replies.ubuf1,
                                     .ubuf1_length = replies.ubuf1_length};
    std::array<char, 1024> error{};
    tamrix_programmer* const made = functions.create(options.c_str(), &memory, error.data(), error.size());
    error.back() = 0;
    if (made == nullptr) fail(path, error[0] != 0 ? error.data() : "there is no programmer");
    return std::make_unique<loaded_programmer>(functions, made);
}

}  // namespace

programmer_source library_source(std::string path, std::string options)
{
    return [path = std::move(path), options = std::move(options)](const reply_memory& replies) {
        return load(path, options, replies);
    };
}

}  // namespace tamrix::hw
