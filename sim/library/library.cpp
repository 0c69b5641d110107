// What the shared library of the simulated programmer exports.
#include "sim/library/running.h"
#include "tamrix/hardware.h"

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>

#if defined(_WIN32)
#define TAMRIX_LIBRARY_EXPORT __declspec(dllexport)
#else
#define TAMRIX_LIBRARY_EXPORT __attribute__((visibility("default")))
#endif

using namespace tamrix;

namespace {

constexpr tamrix_result done = 0, call_failed = 1;

/// No exception gets out.
template <class act>
tamrix_result guarded(tamrix_programmer* which, act&& carry_out)
{
    try {
        const std::lock_guard call{which->busy};
        carry_out();
        return done;
    } catch (const std::exception& error) {
        which->error = error.what();
        return call_failed;
    }
}

tamrix_programmer* create(const char* options, const tamrix_reply_memory* replies, char* error, std::size_t error_bytes)
{
    try {
        if (replies->size_bytes < sizeof(tamrix_reply_memory))
            throw std::invalid_argument{"the memory for replies is that of an older interface"};
        const hw::reply_memory memory{replies->ibuf1, replies->ibuf1_length, replies->usbpip0readresult, replies->ubuf1,
                                      replies->ubuf1_length};
        auto made = std::make_unique<tamrix_programmer>(sim::read_options(options), sim::place_in(memory));
        sim::running_programmers::of_this_process().add(made.get());
        return made.release();
    } catch (const std::exception& problem) {
        if (error != nullptr && error_bytes > 0) std::snprintf(error, error_bytes, "%s", problem.what());
        return nullptr;
    }
}

void destroy(tamrix_programmer* which)
{
    sim::running_programmers::of_this_process().remove(which);
    delete which;
}

const char* error_text(tamrix_programmer* which) { return which->error.c_str(); }

/// A transport call that breaks down is one that failed.
template <class act>
std::int32_t transfer(tamrix_programmer* which, act&& carry_out)
{
    std::int32_t result = 1;
    return guarded(which, [&] { result = carry_out(); }) == done ? result : 1;
}

std::int32_t usbcomwrite(tamrix_programmer* which, const std::uint8_t* buffer, std::int32_t length)
{
    return transfer(which, [&] { return which->transport().usbcomwrite(buffer, length); });
}

std::int32_t usbbulkwrite(tamrix_programmer* which, const std::uint8_t* buffer, std::int32_t length)
{
    return transfer(which, [&] { return which->transport().usbbulkwrite(buffer, length); });
}

std::int32_t usbbulkread(tamrix_programmer* which, std::uint8_t* buffer, std::int32_t length, std::uint8_t* status)
{
    return transfer(which, [&] { return which->transport().usbbulkread(buffer, length, status); });
}

tamrix_result setvcc(tamrix_programmer* which, std::int32_t millivolts)
{
    return guarded(which, [&] { which->device().setvcc(millivolts); });
}

tamrix_result setvpp(tamrix_programmer* which, std::int32_t millivolts, std::uint8_t channel)
{
    return guarded(which, [&] { which->device().setvpp(millivolts, channel); });
}

tamrix_result gndpin(tamrix_programmer* which, std::uint8_t pin, std::uint8_t state)
{
    return guarded(which, [&] { which->device().gndpin(pin, state); });
}

tamrix_result vccpin(tamrix_programmer* which, std::uint8_t pin, std::uint8_t state)
{
    return guarded(which, [&] { which->device().vccpin(pin, state); });
}

tamrix_result vpppin(tamrix_programmer* which, std::uint8_t pin, std::uint8_t state)
{
    return guarded(which, [&] { which->device().vpppin(pin, state); });
}

tamrix_result busmode(tamrix_programmer* which, std::int32_t mode)
{
    return guarded(which, [&] { which->device().busmode(mode); });
}

tamrix_result hwinit(tamrix_programmer* which)
{
    return guarded(which, [&] { which->device().hwinit(); });
}

tamrix_result hwreset(tamrix_programmer* which, std::int32_t* answer)
{
    return guarded(which, [&] { *answer = which->device().hwreset(); });
}

tamrix_result ctlout(tamrix_programmer* which, std::int32_t value, std::uint8_t address, std::int32_t* answer)
{
    return guarded(which, [&] { *answer = which->device().ctlout(value, address); });
}

tamrix_result ctlin(tamrix_programmer* which, std::uint8_t address, std::int32_t* answer)
{
    return guarded(which, [&] { *answer = which->device().ctlin(address); });
}

tamrix_result regout(tamrix_programmer* which, std::int32_t value, std::uint8_t address)
{
    return guarded(which, [&] { which->device().regout(value, address); });
}

tamrix_result regin(tamrix_programmer* which, std::uint8_t address, std::int32_t* answer)
{
    return guarded(which, [&] { *answer = which->device().regin(address); });
}

tamrix_result delayms(tamrix_programmer* which, std::int32_t milliseconds)
{
    return guarded(which, [&] { which->device().delayms(milliseconds); });
}

tamrix_result delayus(tamrix_programmer* which, std::int32_t count)
{
    return guarded(which, [&] { which->device().delayus(count); });
}

tamrix_result replywait(tamrix_programmer* which, std::uint8_t count, std::uint8_t mode, std::int32_t extra,
                        std::int32_t* answer)
{
    return guarded(which, [&] { *answer = which->device().replywait(count, mode, extra) ? 1 : 0; });
}

tamrix_result vecout(tamrix_programmer* which, std::int32_t value, std::uint8_t address)
{
    return guarded(which, [&] { which->device().vecout(value, address); });
}

tamrix_result vecstart(tamrix_programmer* which)
{
    return guarded(which, [&] { which->device().vecstart(); });
}

tamrix_result vecbyte(tamrix_programmer* which, std::uint8_t address)
{
    return guarded(which, [&] { which->device().vecbyte(address); });
}

tamrix_result vecdelay(tamrix_programmer* which, std::int32_t count)
{
    return guarded(which, [&] { which->device().vecdelay(count); });
}

tamrix_result vecdelay2(tamrix_programmer* which, std::int32_t count)
{
    return guarded(which, [&] { which->device().vecdelay2(count); });
}

tamrix_result vecgnd(tamrix_programmer* which, std::uint8_t pin, std::uint8_t state)
{
    return guarded(which, [&] { which->device().vecgnd(pin, state); });
}

tamrix_result vecvcc(tamrix_programmer* which, std::uint8_t pin, std::uint8_t state)
{
    return guarded(which, [&] { which->device().vecvcc(pin, state); });
}

tamrix_result vecvpp(tamrix_programmer* which, std::uint8_t pin, std::uint8_t state)
{
    return guarded(which, [&] { which->device().vecvpp(pin, state); });
}

tamrix_result replycheck(tamrix_programmer* which, std::int32_t count)
{
    return guarded(which, [&] { which->device().replycheck(count); });
}

tamrix_result hwrelease(tamrix_programmer* which)
{
    return guarded(which, [&] { which->device().hwrelease(); });
}

tamrix_result hwfault(tamrix_programmer* which)
{
    return guarded(which, [&] { which->device().hwfault(); });
}

tamrix_result boardsel(tamrix_programmer* which, std::uint8_t code, std::int32_t* answer)
{
    return guarded(which, [&] { *answer = which->device().boardsel(code); });
}

tamrix_result boardsel2(tamrix_programmer* which, std::uint8_t first, std::uint8_t second)
{
    return guarded(which, [&] { which->device().boardsel2(first, second); });
}

constexpr tamrix_hardware functions{
    .version = TAMRIX_HARDWARE_VERSION,
    .size_bytes = sizeof(tamrix_hardware),
    .create = create,
    .destroy = destroy,
    .error_text = error_text,
    .usbcomwrite = usbcomwrite,
    .usbbulkwrite = usbbulkwrite,
    .usbbulkread = usbbulkread,
    .setvcc = setvcc,
    .setvpp = setvpp,
    .gndpin = gndpin,
    .vccpin = vccpin,
    .vpppin = vpppin,
    .busmode = busmode,
    .hwinit = hwinit,
    .hwreset = hwreset,
    .ctlout = ctlout,
    .ctlin = ctlin,
    .regout = regout,
    .regin = regin,
    .delayms = delayms,
    .delayus = delayus,
    .replywait = replywait,
    .vecout = vecout,
    .vecstart = vecstart,
    .vecbyte = vecbyte,
    .vecdelay = vecdelay,
    .vecdelay2 = vecdelay2,
    .vecgnd = vecgnd,
    .vecvcc = vecvcc,
    .vecvpp = vecvpp,
    .replycheck = replycheck,
    .hwrelease = hwrelease,
    .hwfault = hwfault,
    .boardsel = boardsel,
    .boardsel2 = boardsel2,
};

}  // namespace

extern "C" TAMRIX_LIBRARY_EXPORT const tamrix_hardware* tamrix_hardware_functions() { return &functions; }
