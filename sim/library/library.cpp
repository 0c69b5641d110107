// What the shared library of the simulated programmer exports.
#include "sim/library/running.h"
#include "tamrix/hardware.h"

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <type_traits>

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

/// A function of the table for an operation of the device object; what that returns goes to an address at the end.
template <auto operation>
struct exported;

template <class... Taken, void (hw::devobj::*operation)(Taken...)>
struct exported<operation> {
    static tamrix_result call(tamrix_programmer* which, Taken... given)
    {
        return guarded(which, [&] { (which->device().*operation)(given...); });
    }
};

template <class Result, class... Taken, Result (hw::devobj::*operation)(Taken...)>
requires(!std::is_void_v<Result>) struct exported<operation> {
    static tamrix_result call(tamrix_programmer* which, Taken... given, std::int32_t* answer)
    {
        return guarded(which, [&] { *answer = (which->device().*operation)(given...); });
    }
};

constexpr tamrix_hardware functions{.version = TAMRIX_HARDWARE_VERSION,
                                    .size_bytes = sizeof(tamrix_hardware),
                                    .create = create,
                                    .destroy = destroy,
                                    .error_text = error_text,
                                    .usbcomwrite = usbcomwrite,
                                    .usbbulkwrite = usbbulkwrite,
                                    .usbbulkread = usbbulkread,
#define TAMRIX_OPERATION(result, name, parameters, arguments) .name = exported<&hw::devobj::name>::call,
                                    TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)
#undef TAMRIX_OPERATION
};

}  // namespace

extern "C" TAMRIX_LIBRARY_EXPORT const tamrix_hardware* tamrix_hardware_functions() { return &functions; }
