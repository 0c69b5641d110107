/* What the library of the simulated programmer exports in addition to tamrix_hardware_functions(). A host uses it to
   put chips into the simulated socket and to break their pins while the programmer is in use. Plain C; all texts are
   UTF-8.

   The functions act on the programmer that this process created last. Call them from any thread, also while the
   programmer works: a change waits until the running call ends. No function throws. */
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

/* Changes the programmer. `entries` are lines, or parts separated by ";", as in its options text: "socket 7400",
   "socket empty", "fault pin 3 open", "signal P21 square 1000", "chips FOLDER"; "no faults" first removes all earlier
   faults, "no signals" all earlier signals. Either all entries are done or, if one is refused, none; the reason is then
   in `error`, zero-terminated, which has room for `error_bytes` bytes. Returns TAMRIX_SIMULATOR_NOT_RUNNING if no
   simulated programmer exists yet and nothing is wrong with the faults and the signals; the options text that creates
   it takes the same entries. */
TAMRIX_SIMULATOR_EXPORT int32_t tamrix_simulator_change(const char* entries, char* error, size_t error_bytes);

/* Passes to `take`, in order, each hazard since the last call: what could have damaged a real chip or programmer. Those
   of destroyed programmers are included. The text is valid only during the call of `take`, which must call no function
   of this file. */
typedef void (*tamrix_simulator_take_text)(void* context, const char* text);
TAMRIX_SIMULATOR_EXPORT void tamrix_simulator_hazards(tamrix_simulator_take_text take, void* context);

/* A chip that "socket NAME" takes. Pins count from 1. */
typedef struct tamrix_simulator_chip {
    const char* name;
    const char* description;
    const char* same_as; /* the chip with the same pins and function; "" if this one has data of its own */
    int32_t pins, vcc_pin, gnd_pin;
    const char* const* pin_names; /* pin 1 first; "" for a pin without a name */
} tamrix_simulator_chip;

/* Passes the chips of the folder `folder` to `take`, in order. Each is valid only during the call of `take`. Returns 0;
   or 1 with the reason in `error` if a file is wrong, and then `take` has not been called. */
typedef void (*tamrix_simulator_take_chip)(void* context, const tamrix_simulator_chip* chip);
TAMRIX_SIMULATOR_EXPORT int32_t tamrix_simulator_chips(const char* folder, tamrix_simulator_take_chip take,
                                                       void* context, char* error, size_t error_bytes);

#ifdef __cplusplus
}
#endif

#endif
