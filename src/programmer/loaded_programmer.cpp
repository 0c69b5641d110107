#include "programmer/loaded_programmer.h"

#include "programmer/library_symbol.h"
#include "tamrix/hardware.h"

#include <array>
#include <cstring>
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

    void setvcc(std::int32_t millivolts) override { call(table_.setvcc, millivolts); }
    void setvpp(std::int32_t millivolts, std::uint8_t channel) override { call(table_.setvpp, millivolts, channel); }
    void gndpin(std::uint8_t pin, std::uint8_t state) override { call(table_.gndpin, pin, state); }
    void vccpin(std::uint8_t pin, std::uint8_t state) override { call(table_.vccpin, pin, state); }
    void vpppin(std::uint8_t pin, std::uint8_t state) override { call(table_.vpppin, pin, state); }
    void busmode(std::int32_t mode) override { call(table_.busmode, mode); }
    void hwinit() override { call(table_.hwinit); }
    std::int32_t hwreset() override { return ask(table_.hwreset); }
    std::int32_t ctlout(std::int32_t value, std::uint8_t address) override
    {
        return ask(table_.ctlout, value, address);
    }
    std::int32_t ctlin(std::uint8_t address) override { return ask(table_.ctlin, address); }
    void regout(std::int32_t value, std::uint8_t address) override { call(table_.regout, value, address); }
    std::int32_t regin(std::uint8_t address) override { return ask(table_.regin, address); }
    void delayms(std::int32_t milliseconds) override { call(table_.delayms, milliseconds); }
    void delayus(std::int32_t count) override { call(table_.delayus, count); }
    bool replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra) override
    {
        return ask(table_.replywait, count, mode, extra) != 0;
    }
    void vecout(std::int32_t value, std::uint8_t address) override { call(table_.vecout, value, address); }
    void vecstart() override { call(table_.vecstart); }
    void vecbyte(std::uint8_t address) override { call(table_.vecbyte, address); }
    void vecdelay(std::int32_t count) override { call(table_.vecdelay, count); }
    void vecdelay2(std::int32_t count) override { call(table_.vecdelay2, count); }
    void vecgnd(std::uint8_t pin, std::uint8_t state) override { call(table_.vecgnd, pin, state); }
    void vecvcc(std::uint8_t pin, std::uint8_t state) override { call(table_.vecvcc, pin, state); }
    void vecvpp(std::uint8_t pin, std::uint8_t state) override { call(table_.vecvpp, pin, state); }
    void replycheck(std::int32_t count) override { call(table_.replycheck, count); }
    void hwrelease() override { call(table_.hwrelease); }
    void hwfault() override { call(table_.hwfault); }
    std::int32_t boardsel(std::uint8_t code) override { return ask(table_.boardsel, code); }
    void boardsel2(std::uint8_t first, std::uint8_t second) override { call(table_.boardsel2, first, second); }

private:
    template <class... Wanted, class... Given>
    void call(tamrix_result (*function)(tamrix_programmer*, Wanted...), Given... given)
    {
        if (function(which_, given...) != 0) throw programmer_error{table_.error_text(which_)};
    }
    template <class... Wanted, class... Given>
    std::int32_t ask(tamrix_result (*function)(tamrix_programmer*, Wanted...), Given... given)
    {
        std::int32_t answer = 0;
        call(function, given..., &answer);
        return answer;
    }

    const table& table_;
    tamrix_programmer* which_;
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
    const std::pair<const char*, bool> functions[] = {{"create", found.create != nullptr},
                                                      {"destroy", found.destroy != nullptr},
                                                      {"error_text", found.error_text != nullptr},
                                                      {"usbcomwrite", found.usbcomwrite != nullptr},
                                                      {"usbbulkwrite", found.usbbulkwrite != nullptr},
                                                      {"usbbulkread", found.usbbulkread != nullptr},
                                                      {"setvcc", found.setvcc != nullptr},
                                                      {"setvpp", found.setvpp != nullptr},
                                                      {"gndpin", found.gndpin != nullptr},
                                                      {"vccpin", found.vccpin != nullptr},
                                                      {"vpppin", found.vpppin != nullptr},
                                                      {"busmode", found.busmode != nullptr},
                                                      {"hwinit", found.hwinit != nullptr},
                                                      {"hwreset", found.hwreset != nullptr},
                                                      {"ctlout", found.ctlout != nullptr},
                                                      {"ctlin", found.ctlin != nullptr},
                                                      {"regout", found.regout != nullptr},
                                                      {"regin", found.regin != nullptr},
                                                      {"delayms", found.delayms != nullptr},
                                                      {"delayus", found.delayus != nullptr},
                                                      {"replywait", found.replywait != nullptr},
                                                      {"vecout", found.vecout != nullptr},
                                                      {"vecstart", found.vecstart != nullptr},
                                                      {"vecbyte", found.vecbyte != nullptr},
                                                      {"vecdelay", found.vecdelay != nullptr},
                                                      {"vecdelay2", found.vecdelay2 != nullptr},
                                                      {"vecgnd", found.vecgnd != nullptr},
                                                      {"vecvcc", found.vecvcc != nullptr},
                                                      {"vecvpp", found.vecvpp != nullptr},
                                                      {"replycheck", found.replycheck != nullptr},
                                                      {"hwrelease", found.hwrelease != nullptr},
                                                      {"hwfault", found.hwfault != nullptr},
                                                      {"boardsel", found.boardsel != nullptr},
                                                      {"boardsel2", found.boardsel2 != nullptr}};
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
