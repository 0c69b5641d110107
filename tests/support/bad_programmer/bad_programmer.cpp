// A library that no programmer can come from; the build says by a definition what is wrong with it.
#include "programmer/operations.h"
#include "tamrix/hardware.h"

#include <cstdio>

namespace {

[[maybe_unused]] tamrix_programmer* no_programmer(const char*, const tamrix_reply_memory*, char* error,
                                                  std::size_t error_bytes)
{
    std::snprintf(error, error_bytes, "the cable is off");
    return nullptr;
}

template <class result, class... arguments>
void fill(result (*&function)(arguments...))
{
    function = [](arguments...) { return result(); };
}

/// A table that would do, but for what is wrong with it.
[[maybe_unused]] tamrix_hardware make_table()
{
    tamrix_hardware table{};
    table.version = TAMRIX_HARDWARE_VERSION;
    table.size_bytes = sizeof table;
    table.create = no_programmer;
    fill(table.destroy);
    fill(table.error_text);
    fill(table.usbcomwrite);
    fill(table.usbbulkwrite);
    fill(table.usbbulkread);
#define TAMRIX_OPERATION(result, name, parameters, arguments) fill(table.name);
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)
#undef TAMRIX_OPERATION
#if defined(OLD)
    table.version = 1;
#elif defined(NEW)
    table.version = TAMRIX_HARDWARE_VERSION + 1;
#elif defined(SHORT)
    table.size_bytes = sizeof table - 1;
#elif defined(LACKING)
    table.vecstart = nullptr;
#endif
    return table;
}

}  // namespace

#if !defined(NO_SYMBOL)
extern "C" __attribute__((visibility("default"))) const tamrix_hardware* tamrix_hardware_functions()
{
#if defined(NO_TABLE)
    return nullptr;
#else
    static const tamrix_hardware table = make_table();
    return &table;
#endif
}
#endif
