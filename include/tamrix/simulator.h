/* What the shared library of the simulated programmer exports beside tamrix_hardware_functions(): by these functions a
   host lets a person put chips into the simulated socket and break their pins while the programmer is in use. Plain C;
   all texts are UTF-8.

   A programmer is made with its options text when its user first needs it. The functions here reach the one of this
   process that was made last. They can be called from any thread, also while it works: a change waits for the end of
   the call that runs. No function throws. */
#ifndef TAMRIX_SIMULATOR_H
#define TAMRIX_SIMULATOR_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#define TAMRIX_SIMULATOR_EXPORT __declspec(dllexport)
#else
#define TAMRIX_SIMULATOR_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

enum { TAMRIX_SIMULATOR_DONE = 0, TAMRIX_SIMULATOR_REFUSED = 1, TAMRIX_SIMULATOR_NOT_RUNNING = 2 };

/* Changes the programmer. `entries` are lines, or parts between ";", as in its options text: "socket 7400", "socket
   empty", "fault pin 3 open", "chips FOLDER"; "no faults" mends everything that is broken before what the same text
   breaks. All of it is done, or, where it is refused, nothing; the reason then stands zero-terminated in `error`, which
   has room for `error_bytes` bytes. Where no simulated programmer has been made there is nothing to change: the options
   text that makes it can say the same. */
TAMRIX_SIMULATOR_EXPORT int32_t tamrix_simulator_change(const char* entries, char* error, size_t error_bytes);

/* Hands over each hazard that came since the last call, in their order, also of programmers that have gone: what could
   have harmed a real chip or programmer. The text is valid during the call of `take` only, which must not call back. */
typedef void (*tamrix_simulator_take_text)(void* context, const char* text);
TAMRIX_SIMULATOR_EXPORT void tamrix_simulator_hazards(tamrix_simulator_take_text take, void* context);

/* A chip that "socket NAME" takes. Pins count from 1. */
typedef struct tamrix_simulator_chip {
    const char* name;
    const char* description;
    const char* same_as; /* the chip with whose pins and function it agrees; "" where it has data of its own */
    int32_t pins, vcc_pin, gnd_pin;
    const char* const* pin_names; /* pin 1 first; "" where a pin has no name */
} tamrix_simulator_chip;

/* Hands over the chips of the data folder `folder`, in its order. Valid during the call of `take` only. Yields 0, or 1
   and the reason in `error` where a file is wrong; nothing has been handed over then. */
typedef void (*tamrix_simulator_take_chip)(void* context, const tamrix_simulator_chip* chip);
TAMRIX_SIMULATOR_EXPORT int32_t tamrix_simulator_chips(const char* folder, tamrix_simulator_take_chip take,
                                                       void* context, char* error, size_t error_bytes);

#ifdef __cplusplus
}
#endif

#endif
